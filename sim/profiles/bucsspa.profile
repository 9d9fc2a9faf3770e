# bucsspa: Ku-band 200 W block-upconverter SSPA, project 50, firmware 2.31
#
# A high-power BUC on the PIC controller: the PBC upconverter commands, four
# sub-bands (the second selected), DC input monitor, temperature trips as
# numbered parameters; the upconverter is still warming up (S3 bit 32).
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = bucsspa
description = Ku-band 200 W BUC SSPA, project 50
address     = A
unit_id     = 0x0102
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = T@`@
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = serial_text, heater_standby, heater_state, helix, helix_dual
lacks = helix_ratio, helix_trip, heater_voltage, heater_voltage_old
lacks = heater_current, cathode_current, cathode_monitor, tube_life
lacks = arc_test, arc_detector, float_supply, upc_avail, adc_scalers
lacks = digital_pots, band_limits, temperature2, inlet_temp, lldp
lacks = temp_trips, param.136, param.109, param.110, param.111
lacks = param.116, param.118, param.120, param.122, param.124
lacks = param.126, param.320, param.321, param.322

[values]
# Identity
fw.identity         = HPBUC 715-0050-007 V2.31
unit.part           = 3050-011
unit.serial         = B20417
fw.rev              = 2.31
fw.date             = 2019-02-20
fw.cpld             = 1.2
unit.cfg            = 8
model_cfg           = 820-3050-011
product_id          = 3050-011;ORV;B20417;FID417
clock               = 2024/03/28,09:30
led_mode            = 0
# Numbered parameters (.?P / .P)
param.4             = 85
param.66            = 200
param.71            = 570
param.92            = 10.0
param.93            = 0.005
param.131           = KU 200W BUC SSPA ORV
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
fwd_power           = 53.0
rev_power           = 33.0
const_level         = 53.0
atten               = 10.0
atn_count           = 2048
atn_count.mnemonic  = .D9    # the long count form it knows (project 50)
slope               = 2048
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
trip.fwd_hi.level   = 55.0
trip.fwd_lo.type    = A
trip.fwd_lo.level   = 40.0
trip.rev_hi.type    = A
trip.rev_hi.level   = 47.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip    = 56.0
factory.rev_trip    = 48.0
factory.margin      = 10
rev_offset          = 0.0
return_loss         = 14.0
plimit.state        = 0
plimit.level        = 54.5
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
rf_freq             = 14125
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
# Sub-bands: frequency in GHz (00.00 = none), per-sub-band settings
subband.current     = 2
subband.1.freq      = 13.75
subband.2.freq      = 14.00
subband.3.freq      = 14.25
subband.4.freq      = 14.50
subband.5.freq      = 00.00
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
# Block upconverter: attenuation and powers in dB/dBm, temperature in C
buc.atten           = 8.0
buc.power           = -20.5
buc.setpoint        = -25.0
buc.temp            = 38.5
buc.max_atten       = 31.5
buc.offset          = 0.0
buc.mode            = 2
buc.ideal           = -22.0
if_gain_balance     = 0.5
# DC input in V
dc.alarm_lo         = 44.0
dc.alarm_hi         = 54.0
dc.fault_lo         = 40.0
dc.fault_hi         = 58.0
dc.input            = 48.2
dc.ratio            = 1.000
# The unit's own serial ports: baud, parity, data bits, stop bits
com1                = 009600N81
com2                = 009600N81
rs485.wire          = 4
rs485.term          = T
# Ethernet
net.ip              = 192.168.10.60
net.mask            = 255.255.255.0
net.router          = 192.168.10.1
net.mac             = 00:50:C2:12:40:17
net.port            = 2000
net.dhcp            = 0
# Power save
psave.mode          = 1
psave.level         = 2

[wander]
fwd_power = 0.3
rev_power = 0.3
temp      = 2
buc.power = 0.5
buc.temp  = 0.8
buc.ideal = 0.5
dc.input  = 0.3
isense.1  = 0.2

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: B20417
Ovr Temp  53.0  33.0 10.0  60 E 240328 090000
Fan Flt   52.9  33.1 10.0  61 E 240327 100713
RF High   52.8  33.2 10.0  62 E 240326 111426
Low Line  <0.1  33.3 10.0  63 E 240325 122139
Ext Ilok  52.6  33.4 10.0  64 E 240324 132852
Refl RF   52.5  33.5 10.0  65 E 240323 143505
RF Low    <0.1  33.6 10.0  66 E 240322 154218
Pwr Lim   52.3  33.7 10.0  67 E 240321 164931
Ovr Temp  52.2  33.8 10.0  68 E 240320 175644
Fan Flt   52.1  33.9 10.0  69 E 240319 180357
RF High   52.0  34.0 10.0  70 E 240318 191010
Low Line  <0.1  34.1 10.0  71 E 240317 201723
Ext Ilok  51.8  34.2 10.0  72 E 240316 212436
Refl RF   51.7  34.3 10.0  73 E 240315 223149

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: B20417
Log       53.0  33.0 10.0  44 E 240301 000000
Log       53.1  33.1 10.0  45 E 240301 001000
Log       53.2  33.2 10.0  46 E 240301 002000
Log       53.3  33.0 10.0  47 E 240301 003000
Log       53.4  33.1 10.0  44 E 240301 004000
Log       53.0  33.2 10.0  45 E 240301 005000
Log       53.1  33.0 10.0  46 E 240301 010000
Log       53.2  33.1 10.0  47 E 240301 011000
Log       53.3  33.2 10.0  44 E 240301 012000
Log       53.4  33.0 10.0  45 E 240301 013000
Log       53.0  33.1 10.0  46 E 240301 014000
Log       53.1  33.2 10.0  47 E 240301 015000
Log       53.2  33.0 10.0  44 E 240301 020000
Log       53.3  33.1 10.0  45 E 240301 021000
Log       53.4  33.2 10.0  46 E 240301 022000
Log       53.0  33.0 10.0  47 E 240301 023000
Log       53.1  33.1 10.0  44 E 240301 024000
Log       53.2  33.2 10.0  45 E 240301 025000
Log       53.3  33.0 10.0  46 E 240301 030000
Log       53.4  33.1 10.0  47 E 240301 031000
Log       53.0  33.2 10.0  44 E 240301 032000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: B20417
Log       53.0  33.0 10.0  44 E 240301 000000
Log       53.1  33.1 10.0  45 E 240301 010000
Log       53.2  33.2 10.0  46 E 240301 020000
Log       53.3  33.0 10.0  47 E 240301 030000
Log       53.4  33.1 10.0  44 E 240301 040000
Log       53.0  33.2 10.0  45 E 240301 050000
Log       53.1  33.0 10.0  46 E 240301 060000
Log       53.2  33.1 10.0  47 E 240301 070000
Log       53.3  33.2 10.0  44 E 240301 080000
Log       53.4  33.0 10.0  45 E 240301 090000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: B20417
Log       53.0  33.0 10.0  44 E 240301 000000
Log       53.1  33.1 10.0  45 E 240302 000000
Log       53.2  33.2 10.0  46 E 240303 000000
Log       53.3  33.0 10.0  47 E 240304 000000
Log       53.4  33.1 10.0  44 E 240305 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: B20417
Log       53.0  33.0 10.0  44 E 240301 000000
Log       53.1  33.1 10.0  45 E 240401 000000

[log.cathode]
# no cathode current on a solid-state unit: an empty log

[trend.short]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      53.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:10  T@@@/@@@@/@@@@      53.1        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:20  T@@@/@@@@/@@@@      53.2        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:30  T@@@/@@@@/@@@@      53.3        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:40  T@@@/@@@@/@@@@      53.0        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:50  T@@@/@@@@/@@@@      53.1        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:00  T@@@/@@@@/@@@@      53.2        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:10  T@@@/@@@@/@@@@      53.3        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:20  T@@@/@@@@/@@@@      53.0        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:30  T@@@/@@@@/@@@@      53.1        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:40  T@@@/@@@@/@@@@      53.2        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:50  T@@@/@@@@/@@@@      53.3        47       0.0       0.0       0.0      10.0       0.0         0         0

[trend.long]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      53.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 04:00:00  T@@@/@@@@/@@@@      53.1        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 08:00:00  T@@@/@@@@/@@@@      53.2        47       0.0       0.0       0.0      10.0       0.0         0         0

[cal.forward]
first  = 20.0
last   = 58.0
counts = 170 .. 3920

[cal.reverse]
first  = 20.0
last   = 48.0
counts = 200 .. 3760

[cal.drive]
first  = -40.0
last   = 0.0
counts = 120 .. 3600

[cal.atten]
first  = -4.0
last   = 30.0
counts = 4095 .. 2048
