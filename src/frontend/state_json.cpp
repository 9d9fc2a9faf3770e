#include "frontend/state_json.h"

#include "basic/json.h"

namespace amp::frontend {

void WriteState(JsonWriter& w, const StateView& s) {
  w.Key("connected").Bool(s.connected);
  w.Key("form");
  if (s.form) {
    w.Raw(s.form->DumpJson());
  } else {
    w.Null();
  }
  w.Key("messages").BeginArray();
  if (s.messages) {
    for (size_t i = s.firstMessage; i < s.messages->size(); ++i) {
      const auto& m = (*s.messages)[i];
      w.BeginObject();
      w.Key("title").String(m.title);
      w.Key("text").String(m.text);
      w.EndObject();
    }
  }
  w.EndArray();
  w.Key("dialog");
  if (s.dialog) {
    w.Raw(s.dialog->DumpJson());
  } else {
    w.Null();
  }
}

std::string StateJson(const StateView& state) {
  JsonWriter w;
  w.BeginObject();
  WriteState(w, state);
  w.EndObject();
  return w.str();
}

}  // namespace amp::frontend
