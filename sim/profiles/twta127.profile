# twta127: Ku-band 750 W TWTA, project 127, firmware 5.40
#
# A tube amplifier ("YT" starts with T) of project 127: helix, heater and cathode
# readouts, float supply, analog scalers and digital pots, band limits by
# PBRC?/PBRF?, inlet temperature, counted fault log, parameter and trend logs.
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = twta127
description = Ku-band 750 W TWTA, project 127
address     = A
unit_id     = 0x0105
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = T@E@
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = serial_text, helix_dual, subbands, subband_linearizer
lacks = subband_gain, subband_tempco, buc, if_gain_balance
lacks = unit_gain, lldp, dc_input, current_sense, psv, power_save
lacks = cal_drive, param.92, param.93, param.109, param.110
lacks = param.111, param.116, param.118, param.120, param.122
lacks = param.124, param.126, param.320, param.321, param.322

[values]
# Identity
fw.identity         = TWTA 715-0127-005 V5.40
unit.part           = 4127-020
unit.serial         = T40188
fw.rev              = 5.40
fw.date             = 2018-10-15
fw.cpld             = 2.1
unit.cfg            = 513
model_cfg           = 820-4127-020
product_id          = 4127-020;ORV;T40188;TWT188
clock               = 2024/03/28,09:30
led_mode            = 0
upc_avail           = 1
# Numbered parameters (.?P / .P)
param.4             = 70
param.66            = 300
param.71            = 600
param.131           = KU 750W TWTA    ORV1
param.136           = 70
param.151           = 0
param.179           = 60
param.203           = 300
param.212           = 0
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
# RF power in dBm (rf_floor: the reading below range), attenuation in dB
rf_floor            = 0.1
fwd_power           = 58.8
rev_power           = 41.0
const_level         = 58.8
atten               = 10.0
atn_count           = 2048
atn_count.mnemonic  = .D1    # the long count form it knows (project 127)
slope               = 2048
# Linearizer, gain balance
lin.amp             = 2048
lin.phase           = 1024
lin.tilt            = 0
gb.state            = 0
gb.value            = 0.0
# RF trip lines: type F fault, A alarm, D disabled; level in dBm
trip.fwd_hi.type    = F
trip.fwd_hi.level   = 59.8
trip.fwd_lo.type    = A
trip.fwd_lo.level   = 45.0
trip.rev_hi.type    = A
trip.rev_hi.level   = 50.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip    = 60.8
factory.rev_trip    = 51.0
factory.margin      = 10
rev_offset          = 0.0
return_loss         = 15.0
plimit.state        = 1
plimit.level        = 59.3
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
band.2.name         = ""
band.2.freq         = ""
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
# Band limits as project 127 reports them (PBRC? / PBRF?)
band.max            = 59.5
band.min            = 30.0
# Analog scalers (YO) and digital pots (YP) of project 127
adc.0               = 1000
adc.1               = 1010
adc.2               = 995
adc.3               = 1002
adc.4               = 998
adc.5               = 1000
adc.8               = 1005
adc.9               = 1000
adc.10              = 1001
pot.1               = 128
pot.3               = 3.0
pot.4               = 64
pot.5               = 100
pot.6               = 200
# The unit's own serial ports: baud, parity, data bits, stop bits
com1                = 009600N81
com2                = 009600N81
rs485.wire          = 4
rs485.term          = T
# Ethernet
net.ip              = 192.168.10.80
net.mask            = 255.255.255.0
net.router          = 192.168.10.1
net.mac             = 00:50:C2:12:01:88
net.port            = 2000
net.dhcp            = 0

[wander]
fwd_power  = 0.3
rev_power  = 0.4
temp       = 2
temp2      = 1
helix.v    = 0.1
helix.i    = 0.1
cathode.i  = 2
heater.v   = 0.1
inlet_temp = 1

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: T40188
Helx Arc  58.8  41.0 10.0 10.5  2.1  6.3  60 E 240328 090000
HV Under  58.7  41.1 10.0 10.5  2.1  6.3  61 E 240327 100713
Ovr Temp  58.6  41.2 10.0 10.5  2.1  6.3  62 E 240326 111426
Heater    58.5  41.3 10.0 10.5  2.1  6.3  63 E 240325 122139
Low Line  <0.1  41.4 10.0 10.5  2.1  6.3  64 E 240324 132852
Refl RF   58.3  41.5 10.0 10.5  2.1  6.3  65 E 240323 143505
Ext Ilok  58.2  41.6 10.0 10.5  2.1  6.3  66 E 240322 154218
HV Over   58.1  41.7 10.0 10.5  2.1  6.3  67 E 240321 164931
Helx Arc  58.0  41.8 10.0 10.5  2.1  6.3  68 E 240320 175644
HV Under  57.9  41.9 10.0 10.5  2.1  6.3  69 E 240319 180357
Ovr Temp  57.8  42.0 10.0 10.5  2.1  6.3  70 E 240318 191010
Heater    57.7  42.1 10.0 10.5  2.1  6.3  71 E 240317 201723
Low Line  <0.1  42.2 10.0 10.5  2.1  6.3  72 E 240316 212436

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: T40188
Log       58.8  41.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       58.9  41.1 10.0 10.5  2.1  6.3  45 E 240301 001000
Log       59.0  41.2 10.0 10.5  2.1  6.3  46 E 240301 002000
Log       59.1  41.0 10.0 10.5  2.1  6.3  47 E 240301 003000
Log       59.2  41.1 10.0 10.5  2.1  6.3  44 E 240301 004000
Log       58.8  41.2 10.0 10.5  2.1  6.3  45 E 240301 005000
Log       58.9  41.0 10.0 10.5  2.1  6.3  46 E 240301 010000
Log       59.0  41.1 10.0 10.5  2.1  6.3  47 E 240301 011000
Log       59.1  41.2 10.0 10.5  2.1  6.3  44 E 240301 012000
Log       59.2  41.0 10.0 10.5  2.1  6.3  45 E 240301 013000
Log       58.8  41.1 10.0 10.5  2.1  6.3  46 E 240301 014000
Log       58.9  41.2 10.0 10.5  2.1  6.3  47 E 240301 015000
Log       59.0  41.0 10.0 10.5  2.1  6.3  44 E 240301 020000
Log       59.1  41.1 10.0 10.5  2.1  6.3  45 E 240301 021000
Log       59.2  41.2 10.0 10.5  2.1  6.3  46 E 240301 022000
Log       58.8  41.0 10.0 10.5  2.1  6.3  47 E 240301 023000
Log       58.9  41.1 10.0 10.5  2.1  6.3  44 E 240301 024000
Log       59.0  41.2 10.0 10.5  2.1  6.3  45 E 240301 025000
Log       59.1  41.0 10.0 10.5  2.1  6.3  46 E 240301 030000
Log       59.2  41.1 10.0 10.5  2.1  6.3  47 E 240301 031000
Log       58.8  41.2 10.0 10.5  2.1  6.3  44 E 240301 032000
Log       58.9  41.0 10.0 10.5  2.1  6.3  45 E 240301 033000
Log       59.0  41.1 10.0 10.5  2.1  6.3  46 E 240301 034000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: T40188
Log       58.8  41.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       58.9  41.1 10.0 10.5  2.1  6.3  45 E 240301 010000
Log       59.0  41.2 10.0 10.5  2.1  6.3  46 E 240301 020000
Log       59.1  41.0 10.0 10.5  2.1  6.3  47 E 240301 030000
Log       59.2  41.1 10.0 10.5  2.1  6.3  44 E 240301 040000
Log       58.8  41.2 10.0 10.5  2.1  6.3  45 E 240301 050000
Log       58.9  41.0 10.0 10.5  2.1  6.3  46 E 240301 060000
Log       59.0  41.1 10.0 10.5  2.1  6.3  47 E 240301 070000
Log       59.1  41.2 10.0 10.5  2.1  6.3  44 E 240301 080000
Log       59.2  41.0 10.0 10.5  2.1  6.3  45 E 240301 090000
Log       58.8  41.1 10.0 10.5  2.1  6.3  46 E 240301 100000
Log       58.9  41.2 10.0 10.5  2.1  6.3  47 E 240301 110000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: T40188
Log       58.8  41.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       58.9  41.1 10.0 10.5  2.1  6.3  45 E 240302 000000
Log       59.0  41.2 10.0 10.5  2.1  6.3  46 E 240303 000000
Log       59.1  41.0 10.0 10.5  2.1  6.3  47 E 240304 000000
Log       59.2  41.1 10.0 10.5  2.1  6.3  44 E 240305 000000
Log       58.8  41.2 10.0 10.5  2.1  6.3  45 E 240306 000000
Log       58.9  41.0 10.0 10.5  2.1  6.3  46 E 240307 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: T40188
Log       58.8  41.0 10.0 10.5  2.1  6.3  44 E 240301 000000
Log       58.9  41.1 10.0 10.5  2.1  6.3  45 E 240401 000000
Log       59.0  41.2 10.0 10.5  2.1  6.3  46 E 240501 000000

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
184012012355012356 2403110930
183012012356012357 2403120930

[trend.short]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      58.8        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:10  T@@@/@@@@/@@@@      58.9        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:20  T@@@/@@@@/@@@@      59.0        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:30  T@@@/@@@@/@@@@      59.1        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:40  T@@@/@@@@/@@@@      58.8        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:00:50  T@@@/@@@@/@@@@      58.9        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:00  T@@@/@@@@/@@@@      59.0        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:10  T@@@/@@@@/@@@@      59.1        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:20  T@@@/@@@@/@@@@      58.8        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:30  T@@@/@@@@/@@@@      58.9        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:40  T@@@/@@@@/@@@@      59.0        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:01:50  T@@@/@@@@/@@@@      59.1        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:02:00  T@@@/@@@@/@@@@      58.8        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:02:10  T@@@/@@@@/@@@@      58.9        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 00:02:20  T@@@/@@@@/@@@@      59.0        47       2.1      10.5       6.3      10.0       0.0       185      1200

[trend.long]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      58.8        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 04:00:00  T@@@/@@@@/@@@@      58.9        46       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 08:00:00  T@@@/@@@@/@@@@      59.0        47       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 12:00:00  T@@@/@@@@/@@@@      59.1        45       2.1      10.5       6.3      10.0       0.0       185      1200
24/03/01 16:00:00  T@@@/@@@@/@@@@      58.8        46       2.1      10.5       6.3      10.0       0.0       185      1200

[cal.forward]
first  = 30.0
last   = 62.0
counts = 220 .. 3980

[cal.reverse]
first  = 30.0
last   = 52.0
counts = 240 .. 3800

[cal.atten]
first  = 0.0
last   = 30.0
counts = 4095 .. 2048
