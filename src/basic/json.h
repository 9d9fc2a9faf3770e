// A small JSON writer for the state dumps of the panel and the command line.
// Keys keep the order they are written in, so dumps compare line by line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace amp {

// Text as a JSON string literal, quotes included. Bytes outside printable
// ASCII become \u00XX escapes, so any reply a unit sends stays valid JSON.
std::string JsonQuote(std::string_view text);

class JsonWriter {
 public:
  JsonWriter& BeginObject();
  JsonWriter& EndObject();
  JsonWriter& BeginArray();
  JsonWriter& EndArray();
  // The key of the next value inside an object.
  JsonWriter& Key(std::string_view key);
  JsonWriter& String(std::string_view value);
  JsonWriter& Int(int64_t value);
  JsonWriter& Number(double value);
  JsonWriter& Bool(bool value);
  JsonWriter& Null();
  // A value already written as JSON.
  JsonWriter& Raw(std::string_view json);

  const std::string& str() const { return out_; }

 private:
  void BeforeValue();
  std::string out_;
  std::vector<bool> first_;  // per open container: nothing written yet
  bool afterKey_ = false;
};

}  // namespace amp
