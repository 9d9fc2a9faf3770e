# oldunit: an old TWTA firmware (4.12, 2006) without identity text
#
# It does not answer "YT" (so a host takes it for a tube amplifier of unknown
# project), nor "?(" (its alarm status is one word: poll with "?!#9"), nor
# "PBKF?" (temperature trips are the numbered parameters 4, 136, 179), nor any
# of the newer Q, PB, PE and log commands except the short fault log "4".
#
# An ampsim unit profile; the format is described in README.md beside this
# file. Top: the unit's address, id, status words, mode and the command
# families it lacks (refused with a NAK). [values]: what its commands read
# and write. [wander]: readouts that move around their value by at most the
# amount given. Record sections: logs as the unit sends them. [cal.*]:
# calibration tables, generated linearly from the first to the last key.

name        = oldunit
description = old TWTA, firmware 4.12, no identity text
address     = A
unit_id     = 0x0101
# Status groups: summary S1..S4, fault words A..D, alarm words A..D, and
# fault bits that a fault reset cannot clear (the cause is still there)
summary     = T@@@
fault       = @@@@
alarm       = @@@@
fault_hold  = @@@@
mode        = remote
# Command families this unit does not have: each is refused with a NAK.
lacks = alarm_words, identity, serial_text, cfg_word, temp_trips
lacks = counted_log, param_logs, trend_logs, lldp, ethernet, buc
lacks = if_gain_balance, float_supply, psv, dc_input
lacks = cathode_monitor, tube_life, subbands, subband_linearizer
lacks = subband_gain, subband_tempco, upc_avail, led_mode
lacks = product_id, power_save, unit_gain, band_limits, adc_scalers
lacks = digital_pots, heater_state, heater_standby, helix_ratio
lacks = helix_trip, heater_voltage, heater_current, helix_dual
lacks = temperature2, inlet_temp, fan_temp, auto_restore
lacks = rfi_polarity, arc_detector, arc_test, model_cfg, cal_factors
lacks = current_sense, return_loss, cal_drive, cal_reverse, param.92
lacks = param.93, param.131, param.332, param.333, param.334
lacks = param.109, param.110, param.111, param.116, param.118
lacks = param.120, param.122, param.124, param.126, param.320
lacks = param.321, param.322

[values]
# Identity: no "YT"; the "00" reply and the numbered parameters are all it tells
unit.part         = 1044-003
unit.serial       = 0977
fw.rev            = 4.12
fw.date           = 2006-03-17
fw.cpld           = 1.0
unit.cfg          = 0
clock             = 2024/03/28,09:30
# Numbered parameters (.?P / .P)
param.4           = 75
param.66          = 250
param.71          = 550
param.136         = 75
param.151         = 1
param.179         = 65
param.203         = 250
param.212         = 0
param.349         = 0
# Transmitter (HV) and hours
startup           = 0
hours.heater      = 61234
hours.tx          = 48777
# Tube: helix kV and mA, heater V ("?J" only), cathode mA
helix.v           = 9.8
helix.i           = 2.4
heater.v          = 6.2
cathode.i         = 170
# RF power in dBm (rf_floor: the reading below range), attenuation in dB
rf_floor          = 0.1
fwd_power         = 53.0
rev_power         = 36.0
const_level       = 53.0
atten             = 12.5
atn_count         = 2300
atn_count.mnemonic = .D9    # the long count form it knows (no identity, project -1)
slope             = 2300
lin.amp           = 2048
lin.phase         = 1024
lin.tilt          = 0
gb.state          = 0
gb.value          = 0.0
# RF trip lines: type F fault, A alarm, D disabled; level in dBm
trip.fwd_hi.type  = F
trip.fwd_hi.level = 55.0
trip.fwd_lo.type  = A
trip.fwd_lo.level = 40.0
trip.rev_hi.type  = D
trip.rev_hi.level = 45.0
# Factory trips, reverse offset, maximum power limit
factory.fwd_trip  = 56.0
factory.rev_trip  = 46.0
factory.margin    = 5
rev_offset        = -1.5
return_loss       = 12.0
plimit.state      = 0
plimit.level      = 54.0
plimit.fault      = 3.0
# Analog counts .?A1 .. .?A10
acount.1          = 1700
acount.2          = 1600
acount.3          = 400
acount.4          = 2000
acount.5          = 380
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
rf_freq           = 14125
# Fault and alarm enables, temperature in C
fault_enable      = 2097151
alarm_enable      = 1023
temp              = 48
# Temperature compensation
tempco            = 0.060
tempco.twt        = 0.004
ambient           = 25
ambient.twt       = 25.000
gain_tempcomp     = 1
# The unit's own serial ports: baud, parity, data bits, stop bits
com1              = 009600N81
com2              = 009600N81
rs485.wire        = 2
rs485.term        = T

[wander]
fwd_power = 0.4
rev_power = 0.4
temp      = 3
helix.i   = 0.1

[faultlog]
# Event (8 wide), Fpr, Rpr, Atn, HlV, HlI, HtV, Tmp, I, YYMMDD, HHMMSS; the unit adds the end record
SN: 0977
Helx Arc  53.0  36.0 10.0 10.5  2.1  6.3  60 E 240328 090000
HV Under  52.9  36.1 10.0 10.5  2.1  6.3  61 E 240327 100713
Ovr Temp  52.8  36.2 10.0 10.5  2.1  6.3  62 E 240326 111426
Heater    52.7  36.3 10.0 10.5  2.1  6.3  63 E 240325 122139
Low Line  <0.1  36.4 10.0 10.5  2.1  6.3  64 E 240324 132852
Refl RF   52.5  36.5 10.0 10.5  2.1  6.3  65 E 240323 143505
Ext Ilok  52.4  36.6 10.0 10.5  2.1  6.3  66 E 240322 154218
HV Over   52.3  36.7 10.0 10.5  2.1  6.3  67 E 240321 164931

[cal.forward]
first  = 25.0
last   = 58.0
counts = 200 .. 3900

[cal.atten]
first  = 0.0
last   = 25.0
counts = 4095 .. 2300
