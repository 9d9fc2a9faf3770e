#include "commands/reader_support.h"

#include "basic/numbers.h"
#include "basic/text.h"

namespace amp {

int16_t ToInt16(double v) {
  if (auto r = CInt(v)) return *r;
  throw ConversionFailure("overflow converting " + NumText(v) + " to a 16-bit integer");
}

int32_t ToInt32(double v) {
  if (auto r = CLng(v)) return *r;
  throw ConversionFailure("overflow converting " + NumText(v) + " to a 32-bit integer");
}

int16_t TextToInt16(std::string_view text) {
  if (auto r = CIntText(text)) return *r;
  throw ConversionFailure("type mismatch converting '" + Readable(text) + "' to an integer");
}

namespace rd {

bool Send(Comms& c, std::string_view text) { return c.ExchangeCommand(text, false); }

bool Exchange(Comms& c, std::string_view request, std::string& rx) {
  const bool ok = Send(c, request);
  rx = ok ? c.Link.RxMessage : std::string();
  return ok;
}

std::string OpenEnd(const std::string& rx, long start) { return Mid(rx, start); }

std::string ToEtx(const std::string& rx, long start, long searchFrom) {
  const long end = InStr(searchFrom > 0 ? searchFrom : start, rx, std::string(1, '\x03'));
  if (end == 0) return Mid(rx, start);
  return end > start ? Mid(rx, start, end - start) : std::string();
}

bool TextToEtx(const std::string& rx, long start, std::string* text) {
  const long etx = InStr(start, rx, std::string(1, '\x03'));
  if (!(etx > start)) return false;
  *text = Mid(rx, start, etx - start);
  return true;
}

long FrameLen(const std::string& rx) {
  const long n = Len(rx);
  return (n > 0 && rx.back() == '\r') ? n - 1 : n;
}

bool BlankValue(const std::string& rx, long minBlank, std::string* value) {
  const long blank = InStr(rx, " ");
  // The value ends at the frame's ETX, which the checksum follows; a reply
  // that came over TCP still carries the CR that ended its line.
  const long end = FrameLen(rx) - 1;
  if (!(blank > minBlank) || !(end > blank)) return false;
  *value = Mid(rx, blank + 1, end - blank - 1);
  return true;
}

std::vector<std::string> Split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  size_t begin = 0;
  for (;;) {
    const size_t at = text.find(separator, begin);
    if (at == std::string_view::npos) {
      parts.emplace_back(text.substr(begin));
      return parts;
    }
    parts.emplace_back(text.substr(begin, at - begin));
    begin = at + 1;
  }
}

}  // namespace rd
}  // namespace amp
