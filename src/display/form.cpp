#include "display/form.h"

#include <stdexcept>

#include "basic/json.h"

namespace amp::ui {

void Form::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Notify(nullptr);
}

void Form::Register(Control* c) {
  auto [it, added] = byName_.emplace(c->Name(), c);
  if (!added) throw std::logic_error("two controls named " + c->Name() + " on " + name_);
  controls_.push_back(c);
}

Control* Form::Find(std::string_view name) const {
  auto it = byName_.find(name);
  return it == byName_.end() ? nullptr : it->second;
}

std::string Form::DumpJson() const {
  JsonWriter w;
  w.BeginObject();
  w.Key("name").String(name_);
  w.Key("caption").String(caption_);
  w.Key("controls").BeginObject();
  for (const Control* c : controls_) {
    w.Key(c->Name()).BeginObject();
    c->Dump(w);
    w.EndObject();
  }
  w.EndObject();
  w.EndObject();
  return w.str();
}

void Form::Unload() {
  if (!loaded_) return;
  loaded_ = false;
  Notify(nullptr);
}

int Form::AddObserver(Observer o) {
  const int id = nextObserver_++;
  observers_.emplace(id, std::move(o));
  return id;
}

void Form::RemoveObserver(int id) { observers_.erase(id); }

void Form::Notify(Control* c) {
  // Observers may add or remove observers while being told: walk by id, and
  // skip any that went away in the meantime.
  std::vector<int> ids;
  ids.reserve(observers_.size());
  for (const auto& [id, o] : observers_) ids.push_back(id);
  for (int id : ids) {
    auto it = observers_.find(id);
    if (it == observers_.end()) continue;
    Observer o = it->second;  // a copy: the observer may remove itself
    o(c);
  }
}

void Form::ClearGroup(OptionButton* except) {
  for (Control* c : controls_) {
    auto* o = dynamic_cast<OptionButton*>(c);
    if (!o || o == except || o->group_ != except->group_ || !o->value_) continue;
    o->value_ = false;
    Notify(o);
  }
}

}  // namespace amp::ui
