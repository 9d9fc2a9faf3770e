# sspa102: C-band 100 W SSPA, project 102, firmware 2.05
#
# An older solid-state unit: no Ethernet, no OEM name, the short (numbered)
# fault log only, no trend logs, no upconverter, a summary fault latched.
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = sspa102
description = C-band 100 W SSPA, project 102
address     = B
unit_id     = 0x0203
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = L`@@
fault       = @D@@
alarm       = @B@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = serial_text, heater_standby, heater_state, helix, helix_dual
lacks = helix_ratio, helix_trip, heater_voltage, heater_voltage_old
lacks = heater_current, cathode_current, cathode_monitor, tube_life
lacks = arc_test, arc_detector, float_supply, upc_avail, adc_scalers
lacks = digital_pots, band_limits, subbands, subband_linearizer
lacks = subband_gain, subband_tempco, temperature2, inlet_temp, buc
lacks = if_gain_balance, lldp, dc_input, ethernet, counted_log
lacks = trend_logs, cal_drive, param.131, param.109, param.110
lacks = param.111, param.116, param.118, param.120, param.122
lacks = param.124, param.126, param.320, param.321, param.322

[values]
# Identity
fw.identity       = SSPA 715-0102-002 V2.05
unit.part         = 3102-004
unit.serial       = S10877
fw.rev            = 2.05
fw.date           = 2012-09-03
fw.cpld           = 1.2
unit.cfg          = 8
model_cfg         = 820-3102-004
product_id        = 3102-004;ORV;S10877;FID877
clock             = 2024/03/28,09:30
led_mode          = 0
# Numbered parameters (.?P / .P)
param.4           = 85
param.66          = 150
param.71          = 520
param.92          = 10.0
param.93          = 0.005
param.136         = 85
param.151         = 0
param.179         = 75
param.203         = 300
param.212         = 1
param.332         = 60
param.333         = -10
param.334         = 200
param.349         = 1
# Transmitter
rfi.polarity      = 1
auto_restore      = 1
startup           = 0
hours.heater      = 12345
hours.tx          = 9876
# RF power in dBm (rf_floor: the reading below range), attenuation in dB
rf_floor          = 0.1
fwd_power         = 50.0
rev_power         = 31.0
const_level       = 50.0
atten             = 10.0
atn_count         = 2048
atn_count.mnemonic = .D9    # the long count form it knows (project 102)
slope             = 2048
# Linearizer, gain balance, unit gain
lin.amp           = 2048
lin.phase         = 1024
lin.tilt          = 0
gb.state          = 0
gb.value          = 0.0
ug.state          = 0
ug.value          = 0.0
# RF trip lines: type F fault, A alarm, D disabled; level in dBm
trip.fwd_hi.type  = F
trip.fwd_hi.level = 52.0
trip.fwd_lo.type  = A
trip.fwd_lo.level = 40.0
trip.rev_hi.type  = A
trip.rev_hi.level = 47.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip  = 53.0
factory.rev_trip  = 48.0
factory.margin    = 10
rev_offset        = 0.0
return_loss       = 14.0
plimit.state      = 0
plimit.level      = 51.5
plimit.fault      = 3.0
# Analog counts .?A1 .. .?A10
acount.1          = 1820
acount.2          = 1650
acount.3          = 410
acount.4          = 2048
acount.5          = 395
acount.6          = 0
acount.7          = 0
acount.8          = 0
acount.9          = 0
acount.10         = 0
# RF bands: name (letters) and frequency in GHz; an empty name is no band
band.current      = 1
band.1.name       = C
band.1.freq       = 6.00
band.2.name       = ""
band.2.freq       = ""
band.3.name       = ""
band.3.freq       = ""
band.4.name       = ""
band.4.freq       = ""
rf_freq           = 6175
calfactors        = 13.75,0.0;14.00,0.1;14.25,0.2;14.50,0.3;14.75,0.0;15.00,0.1;15.25,0.2;15.50,0.3;15.75,0.0;16.00,0.1;
# Fault and alarm enables, temperatures in C, current sense
fault_enable      = 65535
alarm_enable      = 4095
temp.fault        = 85
temp.alarm        = 75
temp.inlet_diff   = 20
temp.latch        = 0
temp              = 45
fan_temp          = 40
isense.1          = 12.5
isense.2          = 12.1
isense.3          = 4.8
isense.4          = 0.0
# Power supply set value, temperature compensation
psv               = 2800
tempco            = 0.075
tempco.twt        = 0.000
ambient           = 25
ambient.twt       = 25.000
gain_tempcomp     = 1
# The unit's own serial ports: baud, parity, data bits, stop bits
com1              = 009600N81
com2              = 019200E71
rs485.wire        = 2
rs485.term        = U
# Power save
psave.mode        = 0
psave.level       = 5

[wander]
fwd_power = 0.2
rev_power = 0.4
temp      = 1
isense.1  = 0.1
isense.2  = 0.1

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S10877
Ovr Temp  50.0  31.0 10.0  60 E 240328 090000
Fan Flt   49.9  31.1 10.0  61 E 240327 100713
RF High   49.8  31.2 10.0  62 E 240326 111426
Low Line  <0.1  31.3 10.0  63 E 240325 122139
Ext Ilok  49.6  31.4 10.0  64 E 240324 132852
Refl RF   49.5  31.5 10.0  65 E 240323 143505
RF Low    <0.1  31.6 10.0  66 E 240322 154218
Pwr Lim   49.3  31.7 10.0  67 E 240321 164931
Ovr Temp  49.2  31.8 10.0  68 E 240320 175644

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S10877
Log       50.0  31.0 10.0  44 E 240301 000000
Log       50.1  31.1 10.0  45 E 240301 001000
Log       50.2  31.2 10.0  46 E 240301 002000
Log       50.3  31.0 10.0  47 E 240301 003000
Log       50.4  31.1 10.0  44 E 240301 004000
Log       50.0  31.2 10.0  45 E 240301 005000
Log       50.1  31.0 10.0  46 E 240301 010000
Log       50.2  31.1 10.0  47 E 240301 011000
Log       50.3  31.2 10.0  44 E 240301 012000
Log       50.4  31.0 10.0  45 E 240301 013000
Log       50.0  31.1 10.0  46 E 240301 014000
Log       50.1  31.2 10.0  47 E 240301 015000
Log       50.2  31.0 10.0  44 E 240301 020000
Log       50.3  31.1 10.0  45 E 240301 021000
Log       50.4  31.2 10.0  46 E 240301 022000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S10877
Log       50.0  31.0 10.0  44 E 240301 000000
Log       50.1  31.1 10.0  45 E 240301 010000
Log       50.2  31.2 10.0  46 E 240301 020000
Log       50.3  31.0 10.0  47 E 240301 030000
Log       50.4  31.1 10.0  44 E 240301 040000
Log       50.0  31.2 10.0  45 E 240301 050000
Log       50.1  31.0 10.0  46 E 240301 060000
Log       50.2  31.1 10.0  47 E 240301 070000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S10877
Log       50.0  31.0 10.0  44 E 240301 000000
Log       50.1  31.1 10.0  45 E 240302 000000
Log       50.2  31.2 10.0  46 E 240303 000000
Log       50.3  31.0 10.0  47 E 240304 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S10877
Log       50.0  31.0 10.0  44 E 240301 000000
Log       50.1  31.1 10.0  45 E 240401 000000

[log.cathode]
# no cathode current on a solid-state unit: an empty log

[cal.forward]
first  = 15.0
last   = 55.0
counts = 150 .. 3900

[cal.reverse]
first  = 15.0
last   = 45.0
counts = 190 .. 3700

[cal.atten]
first  = -4.0
last   = 30.0
counts = 4095 .. 2100
