// A form of the panel model: the main panel or a dialog. Its controls are
// members of the derived struct and register themselves here by name, so
// front ends, the state dump and scripts can find them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "display/controls.h"

namespace amp::ui {

class Form {
 public:
  explicit Form(std::string name) : name_(std::move(name)) {}
  virtual ~Form() = default;
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;

  const std::string& Name() const { return name_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view c);

  // Controls in the order they were declared.
  const std::vector<Control*>& Controls() const { return controls_; }
  // By full name: "txtAtnDB", "FaultAbit(3)"; nullptr when there is none.
  Control* Find(std::string_view name) const;
  template <typename T>
  T* FindAs(std::string_view name) const {
    return dynamic_cast<T*>(Find(name));
  }

  // The whole form as JSON: {"name":..,"caption":..,"controls":{name:{..},..}}.
  std::string DumpJson() const;

  // Modal dialog bookkeeping: a dialog is shown until Unload.
  bool Loaded() const { return loaded_; }
  void SetLoaded(bool l) { loaded_ = l; }
  // The logic closes a dialog with Unload; the front end's modal loop ends.
  void Unload();
  std::function<void()> Load;         // runs when the dialog is shown
  std::function<void()> QueryUnload;  // runs when the operator closes it
  // Set by a front end that shows the form: puts the focus on a control, as
  // a click into it would (the control left is validated and told first).
  // Unset, the logic moves the focus in the model itself.
  std::function<void(Control& to)> focusMover;

  // Front ends observe changes of any control (or of the caption) here.
  using Observer = std::function<void(Control* changed)>;
  int AddObserver(Observer o);
  void RemoveObserver(int id);

 private:
  friend class Control;
  friend class OptionButton;
  void Register(Control* c);
  void Notify(Control* c);
  void ClearGroup(OptionButton* except);

  std::string name_;
  std::string caption_;
  std::vector<Control*> controls_;
  std::map<std::string, Control*, std::less<>> byName_;
  std::map<int, Observer> observers_;
  int nextObserver_ = 1;
  bool loaded_ = false;
};

}  // namespace amp::ui
