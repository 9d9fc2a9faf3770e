#include "sim/line_settings.h"

#include <termios.h>

#include <cctype>
#include <cmath>
#include <vector>

#include "basic/numbers.h"

namespace amp::sim {
namespace {

struct SpeedEntry {
  int baud;
  speed_t code;
};

constexpr SpeedEntry kSpeeds[] = {
    {50, B50},           {75, B75},           {110, B110},         {134, B134},
    {150, B150},         {200, B200},         {300, B300},         {600, B600},
    {1200, B1200},       {1800, B1800},       {2400, B2400},       {4800, B4800},
    {9600, B9600},       {19200, B19200},     {38400, B38400},     {57600, B57600},
    {115200, B115200},   {230400, B230400},   {460800, B460800},   {500000, B500000},
    {576000, B576000},   {921600, B921600},   {1000000, B1000000}, {1152000, B1152000},
    {1500000, B1500000}, {2000000, B2000000}, {2500000, B2500000}, {3000000, B3000000},
    {3500000, B3500000}, {4000000, B4000000},
};

bool SpeedCode(int baud, speed_t* code) {
  for (const auto& e : kSpeeds) {
    if (e.baud == baud) {
      *code = e.code;
      return true;
    }
  }
  return false;
}

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front()))) s.remove_prefix(1);
  while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back()))) s.remove_suffix(1);
  return s;
}

tcflag_t SizeFlag(int dataBits) {
  switch (dataBits) {
    case 5:
      return CS5;
    case 6:
      return CS6;
    case 7:
      return CS7;
    default:
      return CS8;
  }
}

}  // namespace

double LineSettings::BitsPerChar() const {
  return 1.0 + dataBits + (parity == 'N' ? 0 : 1) + stopBitsX2 / 2.0;
}

long long LineSettings::CharNanos() const {
  if (baud <= 0) return 0;
  return std::llround(BitsPerChar() * 1e9 / baud);
}

std::string LineSettings::ToString() const {
  std::string stop = stopBitsX2 == 3 ? "1.5" : std::to_string(stopBitsX2 / 2);
  return std::to_string(baud) + "," + parity + "," + std::to_string(dataBits) + "," + stop;
}

bool LineSettings::ApplyTo(termios& t) const {
  speed_t code;
  if (!SpeedCode(baud, &code)) return false;
  cfsetispeed(&t, code);
  cfsetospeed(&t, code);
  t.c_cflag &= ~(CSIZE | PARENB | PARODD | CMSPAR | CSTOPB);
  t.c_cflag |= SizeFlag(dataBits);
  switch (parity) {
    case 'E':
      t.c_cflag |= PARENB;
      break;
    case 'O':
      t.c_cflag |= PARENB | PARODD;
      break;
    case 'M':
      t.c_cflag |= PARENB | CMSPAR | PARODD;
      break;
    case 'S':
      t.c_cflag |= PARENB | CMSPAR;
      break;
    default:
      break;
  }
  // termios has no 1.5: the UART uses 1.5 stop bits when asked for two with
  // five data bits, so both map onto CSTOPB.
  if (stopBitsX2 > 2) t.c_cflag |= CSTOPB;
  return true;
}

bool LineSettings::Matches(const termios& t, bool checkCharFormat) const {
  speed_t code;
  if (!SpeedCode(baud, &code)) return false;
  speed_t out = cfgetospeed(&t);
  speed_t in = cfgetispeed(&t);
  // An input speed of B0 means "same as the output speed".
  if (out != code || (in != code && in != B0)) return false;
  if (((t.c_cflag & CSTOPB) != 0) != (stopBitsX2 > 2)) return false;
  if (!checkCharFormat) return true;
  if ((t.c_cflag & CSIZE) != SizeFlag(dataBits)) return false;
  tcflag_t want = 0;
  switch (parity) {
    case 'E':
      want = PARENB;
      break;
    case 'O':
      want = PARENB | PARODD;
      break;
    case 'M':
      want = PARENB | CMSPAR | PARODD;
      break;
    case 'S':
      want = PARENB | CMSPAR;
      break;
    default:
      break;
  }
  tcflag_t have = t.c_cflag & (PARENB | PARODD | CMSPAR);
  // Without parity enabled, PARODD and CMSPAR mean nothing.
  if (!(have & PARENB)) have = 0;
  return have == want;
}

bool ParseLineSettings(std::string_view text, LineSettings* out, std::string* error) {
  std::vector<std::string_view> parts;
  size_t start = 0;
  while (true) {
    size_t comma = text.find(',', start);
    parts.push_back(
        TrimBlanks(text.substr(start, comma == std::string_view::npos ? comma : comma - start)));
    if (comma == std::string_view::npos) break;
    start = comma + 1;
  }
  auto fail = [&](const std::string& why) {
    if (error) *error = "line settings '" + std::string(text) + "': " + why;
    return false;
  };
  if (parts.size() != 4) return fail("expected BAUD,PARITY,DATA,STOP such as 9600,N,8,1");

  LineSettings s;
  speed_t code;
  if (!ParseInt(parts[0], &s.baud) || !SpeedCode(s.baud, &code))
    return fail("'" + std::string(parts[0]) + "' is not a standard baud rate");

  if (parts[1].size() != 1) return fail("parity must be one of N, E, O, M, S");
  s.parity = static_cast<char>(std::toupper(static_cast<unsigned char>(parts[1][0])));
  if (std::string_view("NEOMS").find(s.parity) == std::string_view::npos)
    return fail("parity must be one of N, E, O, M, S");

  if (!ParseInt(parts[2], &s.dataBits) || s.dataBits < 5 || s.dataBits > 8)
    return fail("data bits must be 5, 6, 7 or 8");

  if (parts[3] == "1") {
    s.stopBitsX2 = 2;
  } else if (parts[3] == "1.5") {
    s.stopBitsX2 = 3;
  } else if (parts[3] == "2") {
    s.stopBitsX2 = 4;
  } else {
    return fail("stop bits must be 1, 1.5 or 2");
  }
  *out = s;
  return true;
}

}  // namespace amp::sim
