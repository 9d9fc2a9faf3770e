#include "basic/text.h"

#include <algorithm>
#include <cstddef>

namespace amp {

namespace {

// Index of 1-based `pos` in `s`, when 1 <= pos <= Len(s)+1; else npos.
size_t IndexOf(std::string_view s, long pos) {
  if (pos < 1) return std::string_view::npos;
  const auto index = static_cast<unsigned long>(pos) - 1;
  if (index > s.size()) return std::string_view::npos;
  return static_cast<size_t>(index);
}

char UpperOf(char c) { return (c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c; }
char LowerOf(char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

long Len(std::string_view s) { return static_cast<long>(s.size()); }

std::string Mid(std::string_view s, long start, long length) {
  const size_t index = IndexOf(s, start);
  if (index == std::string_view::npos || index == s.size() || length == 0) return {};
  const size_t rest = s.size() - index;
  const size_t count = (length < 0 || static_cast<unsigned long>(length) >= rest)
                           ? rest
                           : static_cast<size_t>(length);
  return std::string(s.substr(index, count));
}

std::string Left(std::string_view s, long n) {
  if (n <= 0) return {};
  if (static_cast<unsigned long>(n) >= s.size()) return std::string(s);
  return std::string(s.substr(0, static_cast<size_t>(n)));
}

std::string Right(std::string_view s, long n) {
  if (n <= 0) return {};
  if (static_cast<unsigned long>(n) >= s.size()) return std::string(s);
  return std::string(s.substr(s.size() - static_cast<size_t>(n)));
}

long InStr(std::string_view s, std::string_view find) { return InStr(1, s, find); }

long InStr(long start, std::string_view s, std::string_view find) {
  const size_t index = IndexOf(s, start);
  if (index == std::string_view::npos) return 0;  // start < 1 or start > Len+1
  if (find.empty()) return start;
  const size_t at = s.find(find, index);
  return at == std::string_view::npos ? 0 : static_cast<long>(at) + 1;
}

std::string LTrim(std::string_view s) {
  const size_t first = s.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(s.substr(first));
}

std::string RTrim(std::string_view s) {
  const size_t last = s.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string() : std::string(s.substr(0, last + 1));
}

std::string Trim(std::string_view s) {
  const size_t first = s.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  const size_t last = s.find_last_not_of(' ');
  return std::string(s.substr(first, last - first + 1));
}

// ASCII letters only; other bytes (including those above 0x7F) are unchanged.
std::string UCase(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), UpperOf);
  return out;
}

std::string LCase(std::string_view s) {
  std::string out(s);
  std::transform(out.begin(), out.end(), out.begin(), LowerOf);
  return out;
}

// A code outside 0..255 (an error in the classic runtime) gives "".
std::string Chr(int code) {
  if (code < 0 || code > 255) return {};
  return std::string(1, static_cast<char>(static_cast<unsigned char>(code)));
}

int Asc(std::string_view s) { return s.empty() ? -1 : static_cast<unsigned char>(s.front()); }

std::string Readable(std::string_view bytes, bool upperHex) {
  const char* const kHex = upperHex ? "0123456789ABCDEF" : "0123456789abcdef";
  std::string out;
  out.reserve(bytes.size());
  for (const char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    switch (c) {
      case 0x02:
        out += "<STX>";
        break;
      case 0x03:
        out += "<ETX>";
        break;
      case 0x06:
        out += "<ACK>";
        break;
      case 0x15:
        out += "<NAK>";
        break;
      case 0x0D:
        out += "<CR>";
        break;
      case 0x0A:
        out += "<LF>";
        break;
      default:
        if (c < 0x20 || c > 0x7E) {
          out += '<';
          out += kHex[c >> 4];
          out += kHex[c & 0x0F];
          out += '>';
        } else {
          out += ch;
        }
    }
  }
  return out;
}

std::string Hex(std::string_view bytes) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string out;
  out.reserve(bytes.size() * 3);
  for (const char ch : bytes) {
    const auto c = static_cast<unsigned char>(ch);
    if (!out.empty()) out += ' ';
    out += kHex[c >> 4];
    out += kHex[c & 0x0F];
  }
  return out;
}

bool Like(std::string_view text, std::string_view pattern) {
  // Iterative match with one back-track point for the last "*".
  size_t t = 0, p = 0;
  size_t starP = std::string_view::npos, starT = 0;
  while (t < text.size()) {
    if (p < pattern.size() && pattern[p] == '*') {
      starP = p++;
      starT = t;
    } else if (p < pattern.size() &&
               (pattern[p] == '?' ||
                (pattern[p] == '#' ? (text[t] >= '0' && text[t] <= '9') : pattern[p] == text[t]))) {
      ++p;
      ++t;
    } else if (starP != std::string_view::npos) {
      p = starP + 1;
      t = ++starT;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

}  // namespace amp
