// The panel model's controls: small typed objects with the properties the
// panel logic reads and writes. No widgets here; a front end mirrors them.
//
// As on the panel the logic was written for, code that changes a check box's
// Value, sets an option button, or moves a combo or list's ListIndex raises
// that control's Click. The logic guards against its own echo with
// gInPanelUpdate; the model must not hide it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace amp {
class JsonWriter;
}

namespace amp::ui {

// Colours are 0xRRGGBB.
using Color = uint32_t;
// The sixteen classic console colours by number (2 green, 12 red, ...).
Color QBColor(int n);
constexpr Color RGB(int r, int g, int b) {
  return (static_cast<Color>(r & 255) << 16) | (static_cast<Color>(g & 255) << 8) |
         static_cast<Color>(b & 255);
}
std::string ColorText(Color c);  // "#rrggbb"

class Form;

class Control {
 public:
  // `index` >= 0 makes the control an element of the array `name`.
  Control(Form* form, std::string name, int index = -1);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  // "txtAtnDB", or "FaultAbit(3)" for an array element.
  const std::string& Name() const { return name_; }
  const std::string& BaseName() const { return base_; }
  int Index() const { return index_; }
  virtual const char* Kind() const = 0;
  Form* Owner() const { return form_; }

  bool Visible() const { return visible_; }
  void SetVisible(bool v);
  bool Enabled() const { return enabled_; }
  void SetEnabled(bool e);

  // Every property of the control, for the state dump.
  virtual void Dump(JsonWriter& w) const;

  // Events the front ends raise. Handlers are wired by the logic.
  std::function<void()> Click;
  std::function<void()> DblClick;
  std::function<void()> GotFocus;
  std::function<void()> LostFocus;
  std::function<void(bool& cancel)> Validate;
  std::function<void(int& keyAscii)> KeyPress;

  void RaiseClick() {
    if (Click) Click();
  }

 protected:
  // Tells the form (and through it the front ends) that a property changed.
  void Changed();

 private:
  Form* form_;
  std::string base_;
  std::string name_;
  int index_;
  bool visible_ = true;
  bool enabled_ = true;
};

class Label : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "Label"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  Color ForeColor() const { return fore_; }
  void SetForeColor(Color c);
  // The row the label stands in, for the status lists.
  int Top() const { return top_; }
  void SetTop(int t);
  void Dump(JsonWriter& w) const override;

 private:
  std::string caption_;
  Color fore_ = 0x000000;
  int top_ = 0;
};

class TextBox : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "TextBox"; }
  const std::string& Text() const { return text_; }
  void SetText(std::string_view t);
  Color BackColor() const { return back_; }
  void SetBackColor(Color c);
  bool Locked() const { return locked_; }
  void SetLocked(bool l);
  void Dump(JsonWriter& w) const override;
  // Raised when the text changes, by code or by typing.
  std::function<void()> Change;

 private:
  std::string text_;
  Color back_ = 0xFFFFFF;
  bool locked_ = false;
};

class CheckBox : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "CheckBox"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  int Value() const { return value_; }
  // 0 unchecked, 1 checked; a change raises Click.
  void SetValue(int v);
  void Dump(JsonWriter& w) const override;

 private:
  std::string caption_;
  int value_ = 0;
};

class OptionButton : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "OptionButton"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  bool Value() const { return value_; }
  // Setting it (false -> true) raises Click and clears the other option
  // buttons of its group; clearing raises nothing.
  void SetValue(bool v);
  // Option buttons with the same group exclude each other.
  void SetGroup(std::string group) { group_ = std::move(group); }
  const std::string& Group() const { return group_; }
  void Dump(JsonWriter& w) const override;

 private:
  friend class Form;
  std::string caption_;
  std::string group_;
  bool value_ = false;
};

class CommandButton : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "CommandButton"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  void Dump(JsonWriter& w) const override;

 private:
  std::string caption_;
};

// A combo box or a list box: items, the selected index (-1 none) and, for a
// combo, the text in its edit part.
class ListControl : public Control {
 public:
  using Control::Control;
  int ListCount() const { return static_cast<int>(items_.size()); }
  const std::string& List(int i) const;
  const std::vector<std::string>& Items() const { return items_; }
  // Adds at the end, or before `index` when it is given.
  void AddItem(std::string_view item, int index = -1);
  void RemoveItem(int index);
  void Clear();
  int ListIndex() const { return listIndex_; }
  // -1 clears the selection. An index outside the list is refused (false)
  // and changes nothing; a change raises Click.
  bool SetListIndex(int i);
  const std::string& Text() const { return text_; }
  void SetText(std::string_view t);
  void Dump(JsonWriter& w) const override;

 private:
  std::vector<std::string> items_;
  int listIndex_ = -1;
  std::string text_;
};

class ComboBox : public ListControl {
 public:
  using ListControl::ListControl;
  const char* Kind() const override { return "ComboBox"; }
};

class ListBox : public ListControl {
 public:
  using ListControl::ListControl;
  const char* Kind() const override { return "ListBox"; }
};

class MenuItem : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "MenuItem"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  bool Checked() const { return checked_; }
  void SetChecked(bool c);
  // The parent entry's name, "" for a top-level menu.
  void SetParentMenu(std::string parent) { parent_ = std::move(parent); }
  const std::string& ParentMenu() const { return parent_; }
  void Dump(JsonWriter& w) const override;

 private:
  std::string caption_;
  std::string parent_;
  bool checked_ = false;
};

class Frame : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "Frame"; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);
  void Dump(JsonWriter& w) const override;

 private:
  std::string caption_;
};

// The up-down buttons beside a field. The logic reads the click direction.
class UpDown : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "UpDown"; }
  int Value() const { return value_; }
  void SetValue(int v);
  int Min() const { return min_; }
  int Max() const { return max_; }
  void SetRange(int lo, int hi);
  void Dump(JsonWriter& w) const override;
  std::function<void()> UpClick;
  std::function<void()> DownClick;

 private:
  int value_ = 0;
  int min_ = 0;
  int max_ = 10;
};

class ProgressBar : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "ProgressBar"; }
  int Min() const { return min_; }
  int Max() const { return max_; }
  int Value() const { return value_; }
  void SetMin(int v);
  void SetMax(int v);
  void SetValue(int v);
  void Dump(JsonWriter& w) const override;

 private:
  int min_ = 0;
  int max_ = 100;
  int value_ = 0;
};

class StatusBar : public Control {
 public:
  StatusBar(Form* form, std::string name, int panels = 1);
  const char* Kind() const override { return "StatusBar"; }
  const std::string& PanelText(int i) const;
  void SetPanelText(int i, std::string_view t);
  void Dump(JsonWriter& w) const override;

 private:
  std::vector<std::string> panels_;
};

// A timer of the panel. The logic's Timer1 runs on the host's timer; this
// control shows its state and forwards Enabled/Interval to it when one is
// attached.
class TimerControl : public Control {
 public:
  using Control::Control;
  const char* Kind() const override { return "Timer"; }
  bool TimerEnabled() const { return enabledFn_ ? enabledFn_() : timerEnabled_; }
  void SetTimerEnabled(bool e);
  int Interval() const { return interval_; }
  void SetInterval(int ms);
  // Hooks to a real timer: `set` receives every change, `get` is the truth.
  void Attach(std::function<void(bool, int)> set, std::function<bool()> get);
  void Dump(JsonWriter& w) const override;

 private:
  bool timerEnabled_ = false;
  int interval_ = 0;
  std::function<void(bool, int)> setFn_;
  std::function<bool()> enabledFn_;
};

// A fixed-size array of controls named Name(0) .. Name(N-1).
template <typename T, int N>
class ControlArray {
 public:
  ControlArray(Form* form, const std::string& name) {
    items_.reserve(N);
    for (int i = 0; i < N; ++i) items_.emplace_back(std::make_unique<T>(form, name, i));
  }
  T& operator[](int i) { return *items_.at(static_cast<size_t>(i)); }
  const T& operator[](int i) const { return *items_.at(static_cast<size_t>(i)); }
  static constexpr int size() { return N; }

 private:
  std::vector<std::unique_ptr<T>> items_;
};

}  // namespace amp::ui
