# fbdc2295: FBDC unit, firmware 715-2295-001 (project 139), firmware 1.14
#
# The FBDC family: "?/" answers its down-link attenuator in dB, LLDP, five
# sub-bands, the secondary version text ("0S"), Ethernet.
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = fbdc2295
description = FBDC unit 715-2295-001, project 139
address     = A
unit_id     = 0x0104
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = T@@@
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = heater_standby, heater_state, helix, helix_dual, helix_ratio
lacks = helix_trip, heater_voltage, heater_voltage_old
lacks = heater_current, cathode_current, cathode_monitor, tube_life
lacks = arc_test, arc_detector, float_supply, upc_avail, adc_scalers
lacks = digital_pots, temperature2, inlet_temp, buc, if_gain_balance
lacks = dc_input, cal_drive, param.4, param.109, param.110
lacks = param.111, param.116, param.118, param.120, param.122
lacks = param.124, param.126, param.320, param.321, param.322

[values]
# Identity
fw.identity         = FBDC 715-2295-001 V1.14
unit.part           = 2295-101
unit.serial         = F31009
fw.rev              = 1.14
fw.date             = 2021-07-08
fw.cpld             = 1.2
unit.cfg            = 1
model_cfg           = 820-2295-101
product_id          = 2295-101;ORV;F31009;FID009
clock               = 2024/03/28,09:30
led_mode            = 0
# Numbered parameters (.?P / .P)
param.66            = 200
param.71            = 570
param.92            = 10.0
param.93            = 0.005
param.131           = FBDC KU 50W     ORV0
param.136           = 85
param.151           = 0
param.179           = 75
param.203           = 300
param.212           = 1
param.332           = 60
param.333           = -10
param.334           = 200
param.349           = 1
# Transmitter
rfi.polarity        = 1
auto_restore        = 1
startup             = 0
hours.heater        = 12345
hours.tx            = 9876
# RF power in dBm (rf_floor: the reading below range), attenuation in dB
rf_floor            = 0.1
fwd_power           = 47.0
rev_power           = 28.0
const_level         = 47.0
atten               = 10.0
atn_count           = 2048
atn_count.mnemonic  = .D9    # the long count form it knows (project 139)
slope               = 12.5
# Linearizer, gain balance, unit gain
lin.amp             = 2048
lin.phase           = 1024
lin.tilt            = 0
gb.state            = 0
gb.value            = 0.0
ug.state            = 0
ug.value            = 0.0
# RF trip lines: type F fault, A alarm, D disabled; level in dBm
trip.fwd_hi.type    = F
trip.fwd_hi.level   = 49.0
trip.fwd_lo.type    = A
trip.fwd_lo.level   = 40.0
trip.rev_hi.type    = A
trip.rev_hi.level   = 47.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip    = 50.0
factory.rev_trip    = 48.0
factory.margin      = 10
rev_offset          = 0.0
return_loss         = 14.0
plimit.state        = 0
plimit.level        = 48.5
plimit.fault        = 3.0
# Analog counts .?A1 .. .?A10
acount.1            = 1820
acount.2            = 1650
acount.3            = 410
acount.4            = 2048
acount.5            = 395
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
rf_freq             = 14000
calfactors          = 13.75,0.0;14.00,0.1;14.25,0.2;14.50,0.3;14.75,0.0;15.00,0.1;15.25,0.2;15.50,0.3;15.75,0.0;16.00,0.1;
# Fault and alarm enables, temperatures in C, current sense
fault_enable        = 65535
alarm_enable        = 4095
temp.fault          = 85
temp.alarm          = 75
temp.inlet_diff     = 20
temp.latch          = 0
temp                = 45
fan_temp            = 40
isense.1            = 12.5
isense.2            = 12.1
isense.3            = 4.8
isense.4            = 0.0
# Power supply set value, temperature compensation
psv                 = 2800
tempco              = 0.075
tempco.twt          = 0.000
ambient             = 25
ambient.twt         = 25.000
gain_tempcomp       = 1
fw.secondary        = 1.07
# Sub-bands: frequency in GHz (00.00 = none), per-sub-band settings
subband.current     = 1
subband.1.freq      = 13.75
subband.2.freq      = 14.00
subband.3.freq      = 14.25
subband.4.freq      = 14.50
subband.5.freq      = 14.75
subband.6.freq      = 00.00
subband.7.freq      = 00.00
subband.8.freq      = 00.00
subband.1.lin.amp   = 2040
subband.1.lin.phase = 1025
subband.1.slope     = 110
subband.1.lin.tilt  = 0
subband.1.gb        = 0.2
subband.1.tempco    = 0.071
subband.2.lin.amp   = 2080
subband.2.lin.phase = 1050
subband.2.slope     = 120
subband.2.lin.tilt  = 1
subband.2.gb        = 0.4
subband.2.tempco    = 0.072
subband.3.lin.amp   = 2120
subband.3.lin.phase = 1075
subband.3.slope     = 130
subband.3.lin.tilt  = 2
subband.3.gb        = 0.6
subband.3.tempco    = 0.073
subband.4.lin.amp   = 2160
subband.4.lin.phase = 1100
subband.4.slope     = 140
subband.4.lin.tilt  = 3
subband.4.gb        = 0.8
subband.4.tempco    = 0.074
subband.5.lin.amp   = 2200
subband.5.lin.phase = 1125
subband.5.slope     = 150
subband.5.lin.tilt  = 4
subband.5.gb        = 1.0
subband.5.tempco    = 0.075
# The unit's own serial ports: baud, parity, data bits, stop bits
com1                = 009600N81
com2                = 009600N81
rs485.wire          = 4
rs485.term          = T
# Ethernet
net.ip              = 192.168.10.70
net.mask            = 255.255.255.0
net.router          = 192.168.10.1
net.mac             = 00:50:C2:12:31:09
net.port            = 2000
net.dhcp            = 0
# Link Layer Discovery: MED;hardware revision;device id and enable;tx timer;hold;reinit;host
lldp.factory        = 80008;A;4f1c2a7e-0b9d-4c3e-9a51-7d2e8f6b1c30
lldp.user           = 1;30;120;2;fbdc-f31009
# Power save
psave.mode          = 0
psave.level         = 0
# Band limits as the project reports them (PBRC? / PBRF?)
band.max            = 48.0
band.min            = 10.0

[wander]
fwd_power = 0.2
rev_power = 0.2
temp      = 1
isense.1  = 0.1

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: F31009
Ovr Temp  47.0  28.0 10.0  60 E 240328 090000
Fan Flt   46.9  28.1 10.0  61 E 240327 100713
RF High   46.8  28.2 10.0  62 E 240326 111426
Low Line  <0.1  28.3 10.0  63 E 240325 122139
Ext Ilok  46.6  28.4 10.0  64 E 240324 132852
Refl RF   46.5  28.5 10.0  65 E 240323 143505
RF Low    <0.1  28.6 10.0  66 E 240322 154218
Pwr Lim   46.3  28.7 10.0  67 E 240321 164931
Ovr Temp  46.2  28.8 10.0  68 E 240320 175644
Fan Flt   46.1  28.9 10.0  69 E 240319 180357

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: F31009
Log       47.0  28.0 10.0  44 E 240301 000000
Log       47.1  28.1 10.0  45 E 240301 001000
Log       47.2  28.2 10.0  46 E 240301 002000
Log       47.3  28.0 10.0  47 E 240301 003000
Log       47.4  28.1 10.0  44 E 240301 004000
Log       47.0  28.2 10.0  45 E 240301 005000
Log       47.1  28.0 10.0  46 E 240301 010000
Log       47.2  28.1 10.0  47 E 240301 011000
Log       47.3  28.2 10.0  44 E 240301 012000
Log       47.4  28.0 10.0  45 E 240301 013000
Log       47.0  28.1 10.0  46 E 240301 014000
Log       47.1  28.2 10.0  47 E 240301 015000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: F31009
Log       47.0  28.0 10.0  44 E 240301 000000
Log       47.1  28.1 10.0  45 E 240301 010000
Log       47.2  28.2 10.0  46 E 240301 020000
Log       47.3  28.0 10.0  47 E 240301 030000
Log       47.4  28.1 10.0  44 E 240301 040000
Log       47.0  28.2 10.0  45 E 240301 050000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: F31009
Log       47.0  28.0 10.0  44 E 240301 000000
Log       47.1  28.1 10.0  45 E 240302 000000
Log       47.2  28.2 10.0  46 E 240303 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: F31009
Log       47.0  28.0 10.0  44 E 240301 000000

[log.cathode]
# no cathode current on a solid-state unit: an empty log

[trend.short]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      47.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:10  T@@@/@@@@/@@@@      47.1        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:20  T@@@/@@@@/@@@@      47.2        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:30  T@@@/@@@@/@@@@      47.3        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:40  T@@@/@@@@/@@@@      47.0        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:50  T@@@/@@@@/@@@@      47.1        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:00  T@@@/@@@@/@@@@      47.2        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:10  T@@@/@@@@/@@@@      47.3        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:20  T@@@/@@@@/@@@@      47.0        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:30  T@@@/@@@@/@@@@      47.1        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:40  T@@@/@@@@/@@@@      47.2        46       0.0       0.0       0.0      10.0       0.0         0         0

[trend.long]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      47.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 04:00:00  T@@@/@@@@/@@@@      47.1        46       0.0       0.0       0.0      10.0       0.0         0         0

[cal.forward]
first  = 10.0
last   = 50.0
counts = 160 .. 3900

[cal.reverse]
first  = 10.0
last   = 40.0
counts = 190 .. 3700

[cal.atten]
first  = -4.0
last   = 30.0
counts = 4095 .. 2048
