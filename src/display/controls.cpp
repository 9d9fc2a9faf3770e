#include "display/controls.h"

#include <cstdio>
#include <stdexcept>

#include "basic/json.h"
#include "display/form.h"

namespace amp::ui {

Color QBColor(int n) {
  static constexpr Color kColors[16] = {0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080,
                                        0x808000, 0xC0C0C0, 0x808080, 0x0000FF, 0x00FF00, 0x00FFFF,
                                        0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};
  // The table is in the classic numbering already: 1 is dark blue, 4 dark
  // red, 12 light red.
  if (n < 0 || n > 15) throw std::out_of_range("QBColor takes 0 to 15");
  return kColors[n];
}

std::string ColorText(Color c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%06x", static_cast<unsigned>(c & 0xFFFFFF));
  return buf;
}

Control::Control(Form* form, std::string name, int index)
    : form_(form), base_(name), name_(std::move(name)), index_(index) {
  if (index >= 0) name_ += "(" + std::to_string(index) + ")";
  if (form_) form_->Register(this);
}

void Control::Changed() {
  if (form_) form_->Notify(this);
}

void Control::SetVisible(bool v) {
  if (visible_ == v) return;
  visible_ = v;
  Changed();
}

void Control::SetEnabled(bool e) {
  if (enabled_ == e) return;
  enabled_ = e;
  Changed();
}

void Control::Dump(JsonWriter& w) const {
  w.Key("kind").String(Kind());
  w.Key("visible").Bool(visible_);
  w.Key("enabled").Bool(enabled_);
}

// ------------------------------------------------------------------ Label

void Label::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void Label::SetForeColor(Color c) {
  if (fore_ == c) return;
  fore_ = c;
  Changed();
}

void Label::SetTop(int t) {
  if (top_ == t) return;
  top_ = t;
  Changed();
}

void Label::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
  w.Key("foreColor").String(ColorText(fore_));
  w.Key("top").Int(top_);
}

// ---------------------------------------------------------------- TextBox

void TextBox::SetText(std::string_view t) {
  if (text_ == t) return;
  text_ = std::string(t);
  Changed();
  if (Change) Change();
}

void TextBox::SetBackColor(Color c) {
  if (back_ == c) return;
  back_ = c;
  Changed();
}

void TextBox::SetLocked(bool l) {
  if (locked_ == l) return;
  locked_ = l;
  Changed();
}

void TextBox::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("text").String(text_);
  w.Key("backColor").String(ColorText(back_));
  w.Key("locked").Bool(locked_);
}

// --------------------------------------------------------------- CheckBox

void CheckBox::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void CheckBox::SetValue(int v) {
  if (v != 0 && v != 1 && v != 2) throw std::invalid_argument("check box value is 0, 1 or 2");
  if (value_ == v) return;
  value_ = v;
  Changed();
  RaiseClick();
}

void CheckBox::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
  w.Key("value").Int(value_);
}

// ----------------------------------------------------------- OptionButton

void OptionButton::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void OptionButton::SetValue(bool v) {
  if (value_ == v) return;
  value_ = v;
  if (v && Owner()) Owner()->ClearGroup(this);
  Changed();
  if (v) RaiseClick();
}

void OptionButton::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
  w.Key("value").Bool(value_);
}

// ---------------------------------------------------------- CommandButton

void CommandButton::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void CommandButton::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
}

// ------------------------------------------------------------ ListControl

const std::string& ListControl::List(int i) const {
  static const std::string none;
  return (i >= 0 && i < ListCount()) ? items_[static_cast<size_t>(i)] : none;
}

void ListControl::AddItem(std::string_view item, int index) {
  if (index < 0 || index >= ListCount()) {
    items_.emplace_back(item);
  } else {
    items_.insert(items_.begin() + index, std::string(item));
    if (listIndex_ >= index) ++listIndex_;
  }
  Changed();
}

void ListControl::RemoveItem(int index) {
  if (index < 0 || index >= ListCount()) return;
  items_.erase(items_.begin() + index);
  if (listIndex_ == index) {
    listIndex_ = -1;
    text_.clear();
  } else if (listIndex_ > index) {
    --listIndex_;
  }
  Changed();
}

void ListControl::Clear() {
  if (items_.empty() && listIndex_ == -1 && text_.empty()) return;
  items_.clear();
  listIndex_ = -1;
  text_.clear();
  Changed();
}

bool ListControl::SetListIndex(int i) {
  if (i < -1 || i >= ListCount()) return false;
  if (listIndex_ == i) return true;
  listIndex_ = i;
  text_ = i >= 0 ? items_[static_cast<size_t>(i)] : std::string();
  Changed();
  RaiseClick();
  return true;
}

void ListControl::SetText(std::string_view t) {
  if (text_ == t) return;
  text_ = std::string(t);
  Changed();
}

void ListControl::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("listIndex").Int(listIndex_);
  w.Key("text").String(text_);
  w.Key("items").BeginArray();
  for (const auto& item : items_) w.String(item);
  w.EndArray();
}

// --------------------------------------------------------------- MenuItem

void MenuItem::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void MenuItem::SetChecked(bool c) {
  if (checked_ == c) return;
  checked_ = c;
  Changed();
}

void MenuItem::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
  w.Key("checked").Bool(checked_);
  if (!parent_.empty()) w.Key("parent").String(parent_);
}

// ------------------------------------------------------------------ Frame

void Frame::SetCaption(std::string_view c) {
  if (caption_ == c) return;
  caption_ = std::string(c);
  Changed();
}

void Frame::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("caption").String(caption_);
}

// ----------------------------------------------------------------- UpDown

void UpDown::SetValue(int v) {
  if (value_ == v) return;
  value_ = v;
  Changed();
}

void UpDown::SetRange(int lo, int hi) {
  if (min_ == lo && max_ == hi) return;
  min_ = lo;
  max_ = hi;
  Changed();
}

void UpDown::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("value").Int(value_);
  w.Key("min").Int(min_);
  w.Key("max").Int(max_);
}

// ------------------------------------------------------------ ProgressBar

void ProgressBar::SetMin(int v) {
  if (min_ == v) return;
  min_ = v;
  Changed();
}

void ProgressBar::SetMax(int v) {
  if (max_ == v) return;
  max_ = v;
  Changed();
}

void ProgressBar::SetValue(int v) {
  if (v < min_ || v > max_) throw std::out_of_range("progress value outside Min..Max");
  if (value_ == v) return;
  value_ = v;
  Changed();
}

void ProgressBar::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("min").Int(min_);
  w.Key("max").Int(max_);
  w.Key("value").Int(value_);
}

// -------------------------------------------------------------- StatusBar

StatusBar::StatusBar(Form* form, std::string name, int panels)
    : Control(form, std::move(name)), panels_(static_cast<size_t>(panels < 1 ? 1 : panels)) {}

const std::string& StatusBar::PanelText(int i) const {
  static const std::string none;
  return (i >= 0 && i < static_cast<int>(panels_.size())) ? panels_[static_cast<size_t>(i)] : none;
}

void StatusBar::SetPanelText(int i, std::string_view t) {
  if (i < 0 || i >= static_cast<int>(panels_.size())) return;
  if (panels_[static_cast<size_t>(i)] == t) return;
  panels_[static_cast<size_t>(i)] = std::string(t);
  Changed();
}

void StatusBar::Dump(JsonWriter& w) const {
  Control::Dump(w);
  w.Key("panels").BeginArray();
  for (const auto& p : panels_) w.String(p);
  w.EndArray();
}

// ----------------------------------------------------------- TimerControl

void TimerControl::SetTimerEnabled(bool e) {
  timerEnabled_ = e;
  if (setFn_) setFn_(e, interval_);
  Changed();
}

void TimerControl::SetInterval(int ms) {
  interval_ = ms;
  if (setFn_) setFn_(TimerEnabled(), ms);
  Changed();
}

void TimerControl::Attach(std::function<void(bool, int)> set, std::function<bool()> get) {
  setFn_ = std::move(set);
  enabledFn_ = std::move(get);
}

void TimerControl::Dump(JsonWriter& w) const {
  w.Key("kind").String(Kind());
  w.Key("visible").Bool(false);
  w.Key("enabled").Bool(TimerEnabled());
  w.Key("interval").Int(interval_);
}

}  // namespace amp::ui
