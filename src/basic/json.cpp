#include "basic/json.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace amp {

namespace {

// Length of the well-formed UTF-8 sequence at text[i], or 0.
size_t Utf8Length(std::string_view text, size_t i) {
  const auto b = static_cast<unsigned char>(text[i]);
  size_t n = 0;
  if (b >= 0xC2 && b <= 0xDF)
    n = 2;
  else if (b >= 0xE0 && b <= 0xEF)
    n = 3;
  else if (b >= 0xF0 && b <= 0xF4)
    n = 4;
  if (n == 0 || i + n > text.size()) return 0;
  for (size_t k = 1; k < n; ++k)
    if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return 0;
  return n;
}

}  // namespace

std::string JsonQuote(std::string_view text) {
  std::string out = "\"";
  for (size_t i = 0; i < text.size(); ++i) {
    const char ch = text[i];
    const auto c = static_cast<unsigned char>(ch);
    if (c >= 0x80) {
      // Text such as "°" passes as it is; a stray byte of a unit's reply
      // becomes an escape, so the dump stays valid JSON either way.
      if (const size_t n = Utf8Length(text, i)) {
        out.append(text.substr(i, n));
        i += n - 1;
        continue;
      }
    }
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '\t':
        out += "\\t";
        break;
      default:
        if (c < 0x20 || c >= 0x7F) {
          char buf[8];
          std::snprintf(buf, sizeof buf, "\\u%04x", c);
          out += buf;
        } else {
          out += ch;
        }
    }
  }
  out += '"';
  return out;
}

void JsonWriter::BeforeValue() {
  if (afterKey_) {
    afterKey_ = false;
    return;
  }
  if (!first_.empty()) {
    if (!first_.back()) out_ += ',';
    first_.back() = false;
  }
}

JsonWriter& JsonWriter::BeginObject() {
  BeforeValue();
  out_ += '{';
  first_.push_back(true);
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  out_ += '}';
  if (!first_.empty()) first_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::BeginArray() {
  BeforeValue();
  out_ += '[';
  first_.push_back(true);
  return *this;
}

JsonWriter& JsonWriter::EndArray() {
  out_ += ']';
  if (!first_.empty()) first_.pop_back();
  return *this;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
  BeforeValue();
  out_ += JsonQuote(key);
  out_ += ':';
  afterKey_ = true;
  return *this;
}

JsonWriter& JsonWriter::String(std::string_view value) {
  BeforeValue();
  out_ += JsonQuote(value);
  return *this;
}

JsonWriter& JsonWriter::Int(int64_t value) {
  BeforeValue();
  out_ += std::to_string(value);
  return *this;
}

JsonWriter& JsonWriter::Number(double value) {
  BeforeValue();
  if (!std::isfinite(value)) {
    out_ += "null";
    return *this;
  }
  // to_chars ignores the locale: a Qt program runs with the user's.
  char buf[32];
  auto r = std::to_chars(buf, buf + sizeof buf, value);
  out_.append(buf, r.ptr);
  return *this;
}

JsonWriter& JsonWriter::Bool(bool value) {
  BeforeValue();
  out_ += value ? "true" : "false";
  return *this;
}

JsonWriter& JsonWriter::Null() {
  BeforeValue();
  out_ += "null";
  return *this;
}

JsonWriter& JsonWriter::Raw(std::string_view json) {
  BeforeValue();
  out_ += json;
  return *this;
}

}  // namespace amp
