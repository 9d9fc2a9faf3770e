# bucprog: the block-upconverter SSPA with its programmable upconverter in
# use (configuration word bit 10)
#
# A variant: everything not given here is bucsspa's.

based_on    = bucsspa
name        = bucprog
description = block-upconverter SSPA, programmable upconverter in use

[values]
unit.cfg    = 1032
