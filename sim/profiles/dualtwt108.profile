# dualtwt108: dual-tube Ku/Ka TWTA, part number 715-2251-004 (project 108), firmware 6.02
#
# Two tubes: helix readouts per tube ("?VIvi"), two temperatures, two bands,
# a 1-for-1 waveguide arrangement in automatic mode with both switches at A.
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = dualtwt108
description = dual-tube TWTA 715-2251-004, project 108
address     = A
unit_id     = 0x0106
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = TAMA
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = serial_text, subbands, subband_linearizer, subband_gain
lacks = subband_tempco, adc_scalers, digital_pots, band_limits
lacks = inlet_temp, buc, if_gain_balance, unit_gain, lldp, dc_input
lacks = current_sense, psv, power_save, cal_drive, param.92
lacks = param.93

[values]
# Identity
fw.identity         = TWTA DUAL 715-2251-004 V6.02
unit.part           = 2251-004
unit.serial         = D50321
fw.rev              = 6.02
fw.date             = 2019-11-21
fw.cpld             = 2.1
unit.cfg            = 6
model_cfg           = 820-2251-004
product_id          = 2251-004;ORV;D50321;TWT321
clock               = 2024/03/28,09:30
led_mode            = 0
upc_avail           = 1
# Numbered parameters (.?P / .P)
param.4             = 70
param.66            = 300
param.71            = 600
param.109           = 0
param.110           = 255
param.111           = 255
param.116           = 330
param.118           = 630
param.120           = 0
param.122           = 0
param.124           = 0
param.126           = 0
param.131           = "DUAL KU 1.5KW TWTA  "
param.136           = 70
param.151           = 0
param.179           = 60
param.203           = 300
param.212           = 0
param.320           = 300
param.321           = 0
param.322           = 0
param.332           = 60
param.333           = -10
param.334           = 200
param.349           = 1
# Transmitter (HV), heater and hours
rfi.polarity        = 1
auto_restore        = 1
startup             = 0
heater.standby      = 0
heater.on           = 1
hours.heater        = 23456
hours.tx            = 18765
# Tube: helix kV and mA, heater V and A, cathode mA, anode V
helix.v             = 10.5
helix.i             = 2.1
helix.ratio         = 95
helix.trip          = 10.0
heater.v            = 6.3
heater.i            = 1.2
cathode.i           = 185
cathode.mode        = 1
cathode.anode_scale = 2048
cathode.neg_anode   = 0
cathode.neg_start   = 0
cathode.anode_v     = 1200
cathode.scalar      = 2048
cathode.ideal       = 180
eol.params          = 12.5;2.10;50000
eol.estimate        = 12
helix2.v            = 10.4
helix2.i            = 2.0
# RF power in dBm (rf_floor: the reading below range), attenuation in dB
rf_floor            = 0.1
fwd_power           = 61.8
rev_power           = 44.0
const_level         = 61.8
atten               = 10.0
atn_count           = 2048
atn_count.mnemonic  = .D1    # the long count form it knows (a dual-tube project)
slope               = 2048
# Linearizer, gain balance
lin.amp             = 2048
lin.phase           = 1024
lin.tilt            = 0
gb.state            = 0
gb.value            = 0.0
# RF trip lines: type F fault, A alarm, D disabled; level in dBm
trip.fwd_hi.type    = F
trip.fwd_hi.level   = 62.8
trip.fwd_lo.type    = A
trip.fwd_lo.level   = 45.0
trip.rev_hi.type    = A
trip.rev_hi.level   = 50.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip    = 63.8
factory.rev_trip    = 51.0
factory.margin      = 10
rev_offset          = 0.0
return_loss         = 15.0
plimit.state        = 1
plimit.level        = 62.3
plimit.fault        = 2.0
# Analog counts .?A1 .. .?A10
acount.1            = 1910
acount.2            = 1705
acount.3            = 420
acount.4            = 2100
acount.5            = 388
acount.6            = 0
acount.7            = 0
acount.8            = 0
acount.9            = 0
acount.10           = 0
# RF bands: name (letters) and frequency in GHz; an empty name is no band
band.current        = 1
band.1.name         = Ku
band.1.freq         = 14.00
band.2.name         = Ka
band.2.freq         = 29.50
band.3.name         = ""
band.3.freq         = ""
band.4.name         = ""
band.4.freq         = ""
rf_freq             = 14250
calfactors          = 13.75,0.0;14.00,0.1;14.25,0.2;14.50,0.3;14.75,0.0;15.00,0.1;15.25,0.2;15.50,0.3;15.75,0.0;16.00,0.1;
# Fault and alarm enables, temperatures in C
fault_enable        = 268435455
alarm_enable        = 7167
temp.fault          = 70
temp.alarm          = 60
temp.inlet_diff     = 25
temp.latch          = 1
temp                = 52
temp2               = 48
inlet_temp          = 26
fan_temp            = 45
arc_detector        = 0
# Float supply: analogs and settings (heater V; focus off kV; focus on kV; heater A)
amc.analogs         = 6.28;1.21;0.00;2.50;1.05;45;0;1
amc.settings        = 6.30;0.0;2.5;1.20
amc.status          = 0
# Temperature compensation
tempco              = 0.075
tempco.twt          = 0.005
ambient             = 25
ambient.twt         = 25.000
gain_tempcomp       = 1
# The unit's own serial ports: baud, parity, data bits, stop bits
com1                = 009600N81
com2                = 038400N81
rs485.wire          = 4
rs485.term          = T
# Ethernet
net.ip              = 192.168.10.90
net.mask            = 255.255.255.0
net.router          = 192.168.10.1
net.mac             = 00:50:C2:12:03:21
net.port            = 2000
net.dhcp            = 1

[wander]
fwd_power = 0.3
rev_power = 0.4
temp      = 2
temp2     = 2
helix.v   = 0.1
helix.i   = 0.1
helix2.v  = 0.1
helix2.i  = 0.1
cathode.i = 2

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: D50321
Helx Arc  61.8  44.0 10.0 10.5  2.1  6.3  60 E 240328 090000
HV Under  61.7  44.1 10.0 10.5  2.1  6.3  61 E 240327 100713
Ovr Temp  61.6  44.2 10.0 10.5  2.1  6.3  62 E 240326 111426
Heater    61.5  44.3 10.0 10.5  2.1  6.3  63 E 240325 122139
Low Line  <0.1  44.4 10.0 10.5  2.1  6.3  64 E 240324 132852
Refl RF   61.3  44.5 10.0 10.5  2.1  6.3  65 E 240323 143505
Ext Ilok  61.2  44.6 10.0 10.5  2.1  6.3  66 E 240322 154218
HV Over   61.1  44.7 10.0 10.5  2.1  6.3  67 E 240321 164931
Helx Arc  61.0  44.8 10.0 10.5  2.1  6.3  68 E 240320 175644
HV Under  60.9  44.9 10.0 10.5  2.1  6.3  69 E 240319 180357
Ovr Temp  60.8  45.0 10.0 10.5  2.1  6.3  70 E 240318 191010

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: D50321
Log       61.8  44.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       61.9  44.1 10.0 10.5  2.1  6.3  45 E 240301 001000
Log       62.0  44.2 10.0 10.5  2.1  6.3  46 E 240301 002000
Log       62.1  44.0 10.0 10.5  2.1  6.3  47 E 240301 003000
Log       62.2  44.1 10.0 10.5  2.1  6.3  44 E 240301 004000
Log       61.8  44.2 10.0 10.5  2.1  6.3  45 E 240301 005000
Log       61.9  44.0 10.0 10.5  2.1  6.3  46 E 240301 010000
Log       62.0  44.1 10.0 10.5  2.1  6.3  47 E 240301 011000
Log       62.1  44.2 10.0 10.5  2.1  6.3  44 E 240301 012000
Log       62.2  44.0 10.0 10.5  2.1  6.3  45 E 240301 013000
Log       61.8  44.1 10.0 10.5  2.1  6.3  46 E 240301 014000
Log       61.9  44.2 10.0 10.5  2.1  6.3  47 E 240301 015000
Log       62.0  44.0 10.0 10.5  2.1  6.3  44 E 240301 020000
Log       62.1  44.1 10.0 10.5  2.1  6.3  45 E 240301 021000
Log       62.2  44.2 10.0 10.5  2.1  6.3  46 E 240301 022000
Log       61.8  44.0 10.0 10.5  2.1  6.3  47 E 240301 023000
Log       61.9  44.1 10.0 10.5  2.1  6.3  44 E 240301 024000
Log       62.0  44.2 10.0 10.5  2.1  6.3  45 E 240301 025000
Log       62.1  44.0 10.0 10.5  2.1  6.3  46 E 240301 030000
Log       62.2  44.1 10.0 10.5  2.1  6.3  47 E 240301 031000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: D50321
Log       61.8  44.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       61.9  44.1 10.0 10.5  2.1  6.3  45 E 240301 010000
Log       62.0  44.2 10.0 10.5  2.1  6.3  46 E 240301 020000
Log       62.1  44.0 10.0 10.5  2.1  6.3  47 E 240301 030000
Log       62.2  44.1 10.0 10.5  2.1  6.3  44 E 240301 040000
Log       61.8  44.2 10.0 10.5  2.1  6.3  45 E 240301 050000
Log       61.9  44.0 10.0 10.5  2.1  6.3  46 E 240301 060000
Log       62.0  44.1 10.0 10.5  2.1  6.3  47 E 240301 070000
Log       62.1  44.2 10.0 10.5  2.1  6.3  44 E 240301 080000
Log       62.2  44.0 10.0 10.5  2.1  6.3  45 E 240301 090000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: D50321
Log       61.8  44.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       61.9  44.1 10.0 10.5  2.1  6.3  45 E 240302 000000
Log       62.0  44.2 10.0 10.5  2.1  6.3  46 E 240303 000000
Log       62.1  44.0 10.0 10.5  2.1  6.3  47 E 240304 000000
Log       62.2  44.1 10.0 10.5  2.1  6.3  44 E 240305 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: D50321
Log       61.8  44.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       61.9  44.1 10.0 10.5  2.1  6.3  45 E 240401 000000

[log.cathode]
# Ic Va BmHrs HtHrs YYMMDDHHMM in fixed columns
185012012345012346 2403010930
184012012346012347 2403020930
183012012347012348 2403030930
185012012348012349 2403040930
184012012349012350 2403050930
183012012350012351 2403060930
185012012351012352 2403070930
184012012352012353 2403080930
183012012353012354 2403090930
185012012354012355 2403100930

[trend.short]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      61.8        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:10  T@@@/@@@@/@@@@      61.9        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:20  T@@@/@@@@/@@@@      62.0        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:30  T@@@/@@@@/@@@@      62.1        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:40  T@@@/@@@@/@@@@      61.8        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:50  T@@@/@@@@/@@@@      61.9        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:00  T@@@/@@@@/@@@@      62.0        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:10  T@@@/@@@@/@@@@      62.1        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:20  T@@@/@@@@/@@@@      61.8        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:30  T@@@/@@@@/@@@@      61.9        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:40  T@@@/@@@@/@@@@      62.0        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:50  T@@@/@@@@/@@@@      62.1        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:02:00  T@@@/@@@@/@@@@      61.8        45       2.1      10.5       6.3      10.0       0.0       185      1200

[trend.long]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      61.8        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 04:00:00  T@@@/@@@@/@@@@      61.9        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 08:00:00  T@@@/@@@@/@@@@      62.0        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 12:00:00  T@@@/@@@@/@@@@      62.1        45       2.1      10.5       6.3      10.0       0.0       185      1200

[cal.forward]
first  = 30.0
last   = 65.0
counts = 230 .. 3990

[cal.reverse]
first  = 30.0
last   = 55.0
counts = 250 .. 3820

[cal.atten]
first  = 0.0
last   = 30.0
counts = 4095 .. 2048
