# sspa120dhcp: the default SSPA with its Ethernet port set to DHCP
#
# A variant: everything not given here is sspa120's.

based_on    = sspa120
name        = sspa120dhcp
description = Ku-band 400 W SSPA, project 120, Ethernet by DHCP

[values]
net.dhcp    = 1
