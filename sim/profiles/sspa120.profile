# sspa120: Ku-band 400 W SSPA, project 120, firmware 3.10
#
# The unit ampsim is when no profile is named: a typical solid-state amplifier
# with one band, no sub-bands, Ethernet, counted fault log and trend logs.
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = sspa120
description = Ku-band 400 W SSPA, project 120 (default)
address     = A
unit_id     = 0x0101
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = T@A@
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = serial_text, heater_standby, heater_state, helix, helix_dual
lacks = helix_ratio, helix_trip, heater_voltage, heater_voltage_old
lacks = heater_current, cathode_current, cathode_monitor, tube_life
lacks = arc_test, arc_detector, float_supply, upc_avail, adc_scalers
lacks = digital_pots, band_limits, subbands, subband_linearizer
lacks = subband_gain, subband_tempco, temperature2, inlet_temp, buc
lacks = if_gain_balance, lldp, dc_input, cal_drive, param.109
lacks = param.110, param.111, param.116, param.118, param.120
lacks = param.122, param.124, param.126, param.320, param.321
lacks = param.322

[values]
# Identity
fw.identity       = SSPA 715-0120-003 V3.10
unit.part         = 3120-001
unit.serial       = S12034
fw.rev            = 3.10
fw.date           = 2016-05-12
fw.cpld           = 1.2
unit.cfg          = 8
model_cfg         = 820-3120-001
product_id        = 3120-001;ORV;S12034;FID034
clock             = 2024/03/28,09:30
led_mode          = 0
# Numbered parameters (.?P / .P)
param.4           = 85
param.66          = 200
param.71          = 570
param.92          = 10.0
param.93          = 0.005
param.131         = KU 400W SSPA   ORV01
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
fwd_power         = 55.0
rev_power         = 35.5
const_level       = 55.0
atten             = 10.0
atn_count         = 2048
atn_count.mnemonic = .D9    # the long count form it knows (project 120)
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
trip.fwd_hi.level = 57.0
trip.fwd_lo.type  = A
trip.fwd_lo.level = 40.0
trip.rev_hi.type  = A
trip.rev_hi.level = 47.0
# Factory trips, reverse offset, return loss, maximum power limit
factory.fwd_trip  = 58.0
factory.rev_trip  = 48.0
factory.margin    = 10
rev_offset        = 0.0
return_loss       = 14.0
plimit.state      = 0
plimit.level      = 56.5
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
band.1.name       = Ku
band.1.freq       = 14.00
band.2.name       = ""
band.2.freq       = ""
band.3.name       = ""
band.3.freq       = ""
band.4.name       = ""
band.4.freq       = ""
rf_freq           = 14250
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
com2              = 009600N81
rs485.wire        = 4
rs485.term        = T
# Ethernet
net.ip            = 192.168.10.50
net.mask          = 255.255.255.0
net.router        = 192.168.10.1
net.mac           = 00:50:C2:12:34:56
net.port          = 2000
net.dhcp          = 0
# Power save
psave.mode        = 0
psave.level       = 3

[wander]
fwd_power = 0.3
rev_power = 0.3
temp      = 2
isense.1  = 0.2

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S12034
Ovr Temp  55.0  35.5 10.0  60 E 240328 090000
Fan Flt   54.9  35.6 10.0  61 E 240327 100713
RF High   54.8  35.7 10.0  62 E 240326 111426
Low Line  <0.1  35.8 10.0  63 E 240325 122139
Ext Ilok  54.6  35.9 10.0  64 E 240324 132852
Refl RF   54.5  36.0 10.0  65 E 240323 143505
RF Low    <0.1  36.1 10.0  66 E 240322 154218
Pwr Lim   54.3  36.2 10.0  67 E 240321 164931
Ovr Temp  54.2  36.3 10.0  68 E 240320 175644
Fan Flt   54.1  36.4 10.0  69 E 240319 180357
RF High   54.0  36.5 10.0  70 E 240318 191010
Low Line  <0.1  36.6 10.0  71 E 240317 201723

[log.10min]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S12034
Log       55.0  35.5 10.0  44 E 240301 000000
Log       55.1  35.6 10.0  45 E 240301 001000
Log       55.2  35.7 10.0  46 E 240301 002000
Log       55.3  35.5 10.0  47 E 240301 003000
Log       55.4  35.6 10.0  44 E 240301 004000
Log       55.0  35.7 10.0  45 E 240301 005000
Log       55.1  35.5 10.0  46 E 240301 010000
Log       55.2  35.6 10.0  47 E 240301 011000
Log       55.3  35.7 10.0  44 E 240301 012000
Log       55.4  35.5 10.0  45 E 240301 013000
Log       55.0  35.6 10.0  46 E 240301 014000
Log       55.1  35.7 10.0  47 E 240301 015000
Log       55.2  35.5 10.0  44 E 240301 020000
Log       55.3  35.6 10.0  45 E 240301 021000
Log       55.4  35.7 10.0  46 E 240301 022000
Log       55.0  35.5 10.0  47 E 240301 023000
Log       55.1  35.6 10.0  44 E 240301 024000
Log       55.2  35.7 10.0  45 E 240301 025000
Log       55.3  35.5 10.0  46 E 240301 030000
Log       55.4  35.6 10.0  47 E 240301 031000
Log       55.0  35.7 10.0  44 E 240301 032000
Log       55.1  35.5 10.0  45 E 240301 033000
Log       55.2  35.6 10.0  46 E 240301 034000
Log       55.3  35.7 10.0  47 E 240301 035000

[log.hourly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S12034
Log       55.0  35.5 10.0  44 E 240301 000000
Log       55.1  35.6 10.0  45 E 240301 010000
Log       55.2  35.7 10.0  46 E 240301 020000
Log       55.3  35.5 10.0  47 E 240301 030000
Log       55.4  35.6 10.0  44 E 240301 040000
Log       55.0  35.7 10.0  45 E 240301 050000
Log       55.1  35.5 10.0  46 E 240301 060000
Log       55.2  35.6 10.0  47 E 240301 070000
Log       55.3  35.7 10.0  44 E 240301 080000
Log       55.4  35.5 10.0  45 E 240301 090000
Log       55.0  35.6 10.0  46 E 240301 100000
Log       55.1  35.7 10.0  47 E 240301 110000

[log.daily]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S12034
Log       55.0  35.5 10.0  44 E 240301 000000
Log       55.1  35.6 10.0  45 E 240302 000000
Log       55.2  35.7 10.0  46 E 240303 000000
Log       55.3  35.5 10.0  47 E 240304 000000
Log       55.4  35.6 10.0  44 E 240305 000000
Log       55.0  35.7 10.0  45 E 240306 000000

[log.monthly]
# Event (8 wide), Fpr, Rpr, Atn, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: S12034
Log       55.0  35.5 10.0  44 E 240301 000000
Log       55.1  35.6 10.0  45 E 240401 000000
Log       55.2  35.7 10.0  46 E 240501 000000

[log.cathode]
# no cathode current on a solid-state unit: an empty log

[trend.short]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      55.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:10  T@@@/@@@@/@@@@      55.1        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:20  T@@@/@@@@/@@@@      55.2        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:30  T@@@/@@@@/@@@@      55.3        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:40  T@@@/@@@@/@@@@      55.0        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:00:50  T@@@/@@@@/@@@@      55.1        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:00  T@@@/@@@@/@@@@      55.2        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:10  T@@@/@@@@/@@@@      55.3        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:20  T@@@/@@@@/@@@@      55.0        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:30  T@@@/@@@@/@@@@      55.1        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:40  T@@@/@@@@/@@@@      55.2        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:01:50  T@@@/@@@@/@@@@      55.3        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:02:00  T@@@/@@@@/@@@@      55.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 00:02:10  T@@@/@@@@/@@@@      55.1        46       0.0       0.0       0.0      10.0       0.0         0         0

[trend.long]
# Date Time Sum/Flt/Alm Fpr Tmp HxI HxV HtV Atn UPC CaI AnV; sent as 200 characters each
24/03/01 00:00:00  T@@@/@@@@/@@@@      55.0        45       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 04:00:00  T@@@/@@@@/@@@@      55.1        46       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 08:00:00  T@@@/@@@@/@@@@      55.2        47       0.0       0.0       0.0      10.0       0.0         0         0
24/03/01 12:00:00  T@@@/@@@@/@@@@      55.3        45       0.0       0.0       0.0      10.0       0.0         0         0

[cal.forward]
first  = 20.0
last   = 60.0
counts = 180 .. 3950

[cal.reverse]
first  = 20.0
last   = 50.0
counts = 210 .. 3800

[cal.atten]
first  = -4.0
last   = 30.0
counts = 4095 .. 2048
