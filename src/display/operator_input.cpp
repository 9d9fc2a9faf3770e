#include "display/operator_input.h"

#include <string>

namespace amp::ui {

namespace {

constexpr int kBackspace = 8, kEnter = 13, kEsc = 27;

}  // namespace

void OperatorClick(Control& c) {
  if (auto* chk = dynamic_cast<CheckBox*>(&c)) {
    chk->SetValue(chk->Value() == 1 ? 0 : 1);
  } else if (auto* opt = dynamic_cast<OptionButton*>(&c)) {
    opt->SetValue(true);
  } else {
    c.RaiseClick();
  }
}

int TypeKey(Control& c, int key) {
  if (c.KeyPress) c.KeyPress(key);
  if (key == 0 || key == kEnter || key == kEsc) return key;
  auto* box = dynamic_cast<TextBox*>(&c);
  auto* list = dynamic_cast<ListControl*>(&c);
  std::string text = box ? box->Text() : list ? list->Text() : std::string();
  if (key == kBackspace) {
    if (!text.empty()) text.pop_back();
  } else {
    text += static_cast<char>(key);
  }
  if (box) box->SetText(text);
  if (list) list->SetText(text);
  return key;
}

}  // namespace amp::ui
