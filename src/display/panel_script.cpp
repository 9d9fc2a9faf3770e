#include "display/panel_script.h"

#include "display/operator_input.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

namespace amp::ui {

namespace {

using Verb = ScriptAction::Verb;

// What follows the verb on a line.
enum class Args { None, Control, ControlText, ControlKey, OptionalCount, Count };

struct VerbSpec {
  const char* name;
  Verb verb;
  Args args;
};

constexpr VerbSpec kVerbs[] = {
    {"click", Verb::Click, Args::Control},
    {"type", Verb::Type, Args::ControlText},
    {"key", Verb::Key, Args::ControlKey},
    {"set", Verb::Set, Args::ControlText},
    {"leave", Verb::Leave, Args::Control},
    {"focus", Verb::Focus, Args::Control},
    {"select", Verb::Select, Args::ControlText},
    {"up", Verb::Up, Args::Control},
    {"down", Verb::Down, Args::Control},
    {"dblclick", Verb::DblClick, Args::Control},
    {"poll", Verb::Poll, Args::OptionalCount},
    {"wait", Verb::Wait, Args::Count},
    {"dump", Verb::Dump, Args::None},
};

// Bounds that keep a script from running for ever by a typo.
constexpr int kMaxPolls = 1000;
constexpr int kMaxWaitMs = 3600 * 1000;

constexpr int kEnter = 13, kEsc = 27, kBackspace = 8;

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view TrimView(std::string_view s) {
  while (!s.empty() && (IsBlank(s.front()) || s.front() == '\r')) s.remove_prefix(1);
  while (!s.empty() && (IsBlank(s.back()) || s.back() == '\r')) s.remove_suffix(1);
  return s;
}

// The next blank-separated word of `rest`, which moves past it.
std::string_view NextWord(std::string_view& rest) {
  rest = TrimView(rest);
  size_t end = 0;
  while (end < rest.size() && !IsBlank(rest[end])) ++end;
  std::string_view word = rest.substr(0, end);
  rest.remove_prefix(end);
  return word;
}

std::string Lower(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return out;
}

std::optional<int> Count(std::string_view s, int lo, int hi) {
  if (s.empty() || s.size() > 9) return std::nullopt;
  int v = 0;
  for (char c : s) {
    if (c < '0' || c > '9') return std::nullopt;
    v = v * 10 + (c - '0');
  }
  if (v < lo || v > hi) return std::nullopt;
  return v;
}

// "Enter", "Esc", "Backspace" or one character, as the key code a key
// handler receives.
std::optional<int> KeyCode(std::string_view key) {
  const std::string k = Lower(key);
  if (k == "enter") return kEnter;
  if (k == "esc") return kEsc;
  if (k == "backspace") return kBackspace;
  if (key.size() == 1 && static_cast<unsigned char>(key[0]) >= 32 &&
      static_cast<unsigned char>(key[0]) < 127)
    return static_cast<unsigned char>(key[0]);
  return std::nullopt;
}

bool Is(const Control& c, std::initializer_list<const char*> kinds) {
  const std::string_view kind = c.Kind();
  return std::any_of(kinds.begin(), kinds.end(), [&](const char* k) { return kind == k; });
}

// Whether a control of this kind can take the action, as on a real panel.
bool Takes(Verb v, const Control& c) {
  switch (v) {
    case Verb::Click:
      return !Is(c, {"Timer", "UpDown"});
    case Verb::Type:
    case Verb::Key:
    case Verb::Set:
      return Is(c, {"TextBox", "ComboBox"});
    case Verb::Leave:
    case Verb::Focus:
      return Is(c, {"TextBox", "ComboBox", "ListBox", "CheckBox", "OptionButton", "CommandButton",
                    "UpDown"});
    case Verb::Select:
      return Is(c, {"ComboBox", "ListBox"});
    case Verb::Up:
    case Verb::Down:
      return Is(c, {"UpDown"});
    case Verb::DblClick:
      return !Is(c, {"Timer", "MenuItem"});
    default:
      return false;
  }
}

const VerbSpec& SpecOf(Verb v) {
  for (const auto& s : kVerbs)
    if (s.verb == v) return s;
  return kVerbs[0];
}

std::string FullName(const ScriptAction& a, const std::vector<Form*>& forms) {
  if (forms.empty() || a.form == forms.front()->Name()) return a.control;
  return a.form + "." + a.control;
}

void SetTextOf(Control& c, std::string_view text) {
  if (auto* t = dynamic_cast<TextBox*>(&c)) t->SetText(text);
  if (auto* l = dynamic_cast<ListControl*>(&c)) l->SetText(text);
}

}  // namespace

std::string ScriptError::Text() const {
  return line > 0 ? "line " + std::to_string(line) + ": " + message : message;
}

const char* VerbName(Verb verb) { return SpecOf(verb).name; }

std::optional<ScriptError> ParseScript(std::string_view text, std::vector<ScriptAction>& out) {
  out.clear();
  int lineNo = 0;
  while (!text.empty() || lineNo == 0) {
    ++lineNo;
    const size_t nl = text.find('\n');
    std::string_view line = text.substr(0, nl);
    text.remove_prefix(nl == std::string_view::npos ? text.size() : nl + 1);
    std::string_view rest = TrimView(line);
    if (rest.empty() || rest.front() == '#') {
      if (text.empty()) break;
      continue;
    }
    auto fail = [&](std::string message) { return ScriptError{lineNo, std::move(message)}; };

    const std::string verbWord = Lower(NextWord(rest));
    const VerbSpec* verbRow = nullptr;
    for (const auto& s : kVerbs)
      if (verbWord == s.name) verbRow = &s;
    if (!verbRow) {
      return fail("unknown action '" + verbWord +
                  "' (click, type, key, set, leave, focus, select, up, down, dblclick, poll, "
                  "wait, dump)");
    }
    ScriptAction a;
    a.line = lineNo;
    a.verb = verbRow->verb;

    if (verbRow->args != Args::None && verbRow->args != Args::OptionalCount &&
        verbRow->args != Args::Count) {
      const std::string_view name = NextWord(rest);
      if (name.empty() || name.front() == '#')
        return fail(std::string(verbRow->name) + " needs a control");
      const size_t dot = name.find('.');
      if (dot != std::string_view::npos) {
        a.form = std::string(name.substr(0, dot));
        a.control = std::string(name.substr(dot + 1));
        if (a.form.empty() || a.control.empty())
          return fail("'" + std::string(name) +
                      "' is not a control name (CONTROL or frmName.control)");
      } else {
        a.control = std::string(name);
      }
    }

    const bool takesText = verbRow->args == Args::ControlText || verbRow->args == Args::ControlKey;
    if (takesText) {
      std::string_view value = TrimView(rest);
      if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
        value = value.substr(1, value.size() - 2);
      } else if (value.empty()) {
        return fail(std::string(verbRow->name) + " " + a.control + " needs " +
                    (verbRow->args == Args::ControlKey
                         ? "a key (Enter, Esc, Backspace or one character)"
                     : a.verb == Verb::Select ? "an item's text or index"
                                              : "a text (\"\" for an empty one)"));
      }
      a.text = std::string(value);
      if (verbRow->args == Args::ControlKey) {
        const auto code = KeyCode(a.text);
        if (!code)
          return fail("unknown key '" + a.text + "' (Enter, Esc, Backspace or one character)");
        a.count = *code;
      }
    } else {
      // Words left over are an error, unless they are a comment.
      std::string_view word = NextWord(rest);
      if (verbRow->args == Args::OptionalCount || verbRow->args == Args::Count) {
        if (word.empty() || word.front() == '#') {
          if (verbRow->args == Args::Count) return fail("wait needs a time in milliseconds");
          a.count = 1;
        } else {
          const bool isPoll = verbRow->args == Args::OptionalCount;
          const auto n = isPoll ? Count(word, 1, kMaxPolls) : Count(word, 0, kMaxWaitMs);
          if (!n) {
            return fail(isPoll ? "poll takes a count from 1 to " + std::to_string(kMaxPolls) +
                                     ", not '" + std::string(word) + "'"
                               : "wait takes milliseconds from 0 to " + std::to_string(kMaxWaitMs) +
                                     ", not '" + std::string(word) + "'");
          }
          a.count = *n;
          word = NextWord(rest);
        }
      }
      if (!word.empty() && word.front() != '#')
        return fail("unexpected '" +
                    std::string(TrimView(
                        std::string_view(word.data(), rest.data() + rest.size() - word.data()))) +
                    "' after " + verbRow->name);
    }
    out.push_back(std::move(a));
    if (text.empty()) break;
  }
  return std::nullopt;
}

std::optional<ScriptError> ValidateScript(const std::vector<ScriptAction>& actions,
                                          const std::vector<Form*>& forms) {
  if (forms.empty()) return ScriptError{0, "no forms to run the script on"};
  for (const ScriptAction& a : actions) {
    if (a.control.empty()) continue;
    const Form* form = nullptr;
    if (a.form.empty()) {
      form = forms.front();
    } else {
      for (const Form* f : forms)
        if (f->Name() == a.form) form = f;
    }
    if (!form) {
      std::string known;
      for (const Form* f : forms) known += (known.empty() ? "" : ", ") + f->Name();
      return ScriptError{a.line, "no form named '" + a.form + "' (" + known + ")"};
    }
    const Control* c = form->Find(a.control);
    if (!c) {
      return ScriptError{a.line, "unknown control '" + a.control + "' on " + form->Name()};
    }
    if (!Takes(a.verb, *c)) {
      return ScriptError{a.line, std::string(VerbName(a.verb)) + " does not apply to " + a.control +
                                     " (a " + c->Kind() + ")"};
    }
  }
  return std::nullopt;
}

PanelScript::PanelScript(Host host, std::vector<ScriptAction> actions)
    : host_(std::move(host)), actions_(std::move(actions)) {
  // Plain names address the main panel: make that explicit once.
  if (!host_.forms.empty())
    for (auto& a : actions_)
      if (!a.control.empty() && a.form.empty()) a.form = host_.forms.front()->Name();
}

Form* PanelScript::FormNamed(const std::string& name) const {
  for (Form* f : host_.forms)
    if (f->Name() == name) return f;
  return nullptr;
}

void PanelScript::Run() {
  RunUntil([] { return false; });
  Finish();
}

void PanelScript::RunModal(Form& form) {
  open_.push_back(&form);
  RunUntil([&form] { return !form.Loaded(); });
  if (form.Loaded()) Finish();
  open_.pop_back();
}

void PanelScript::RunUntil(const std::function<bool()>& stop) {
  while (!Done() && !stop()) {
    const ScriptAction& a = actions_[next_++];
    if (host_.beforeAction) host_.beforeAction(a);
    if (stopped_) break;
    if (auto why = Execute(a)) failure_ = ScriptError{a.line, *why};
  }
}

void PanelScript::Finish() {
  if (ended_) return;
  ended_ = true;
  if (onEnd) onEnd(open_.empty() ? nullptr : open_.back());
}

std::optional<std::string> PanelScript::Execute(const ScriptAction& a) {
  auto note = [this, &a](const std::string& text) {
    if (host_.note) host_.note("line " + std::to_string(a.line) + ": " + text);
  };
  switch (a.verb) {
    case Verb::Poll:
      for (int i = 0; i < a.count; ++i) {
        if (!host_.pollRunning || !host_.pollRunning()) {
          note("the poll timer is stopped: " + std::to_string(a.count - i) + " tick(s) skipped");
          break;
        }
        host_.pollTick();
      }
      return std::nullopt;
    case Verb::Wait:
      if (host_.wait) host_.wait(a.count);
      return std::nullopt;
    case Verb::Dump:
      if (host_.dump) host_.dump(open_.empty() ? nullptr : open_.back());
      return std::nullopt;
    default:
      break;
  }

  Form* form = FormNamed(a.form);
  Control* c = form ? form->Find(a.control) : nullptr;
  const std::string name = FullName(a, host_.forms);
  if (!c) return "unknown control '" + name + "'";  // checked before the run; forms may change
  Form* front = open_.empty() ? host_.forms.front() : open_.back();
  if (form != front) {
    if (!open_.empty())
      return name + ": " + front->Name() + " is open in front of " + form->Name() +
             "; close it first";
    return name + ": " + form->Name() + " is not open";
  }
  if (!c->Visible()) return name + " is hidden";
  if (!c->Enabled()) return name + " is disabled";

  auto noHandler = [&](bool has, const char* event) {
    if (!has) note(name + " has no " + event + " handler: nothing happened");
  };
  switch (a.verb) {
    case Verb::Click:
      if (!dynamic_cast<OptionButton*>(c)) noHandler(static_cast<bool>(c->Click), "Click");
      OperatorClick(*c);
      break;
    case Verb::Type:
      for (unsigned char ch : a.text) {
        TypeKey(*c, ch);
        if (!form->Loaded()) break;  // a key closed the dialog
      }
      break;
    case Verb::Key:
      TypeKey(*c, a.count);
      break;
    case Verb::Set:
      SetTextOf(*c, a.text);
      break;
    case Verb::Leave: {
      bool cancel = false;
      if (c->Validate) c->Validate(cancel);
      if (cancel) {
        note(name + " keeps the focus: its value was refused");
      } else if (c->LostFocus) {
        c->LostFocus();
      }
      break;
    }
    case Verb::Focus:
      if (c->GotFocus) c->GotFocus();
      break;
    case Verb::Select: {
      auto* list = dynamic_cast<ListControl*>(c);
      if (!list) return name + " is not a list";
      int index = -1;
      for (int i = 0; i < list->ListCount() && index < 0; ++i)
        if (list->List(i) == a.text) index = i;
      if (index < 0) {
        if (auto n = Count(a.text, 0, list->ListCount() - 1)) index = *n;
      }
      if (index < 0) {
        std::string items;
        for (const auto& item : list->Items()) items += (items.empty() ? "'" : ", '") + item + "'";
        return name + " has no item '" + a.text + "' (" +
               (items.empty() ? "the list is empty" : "items: " + items + ", or an index from 0") +
               ")";
      }
      list->SetListIndex(index);
      break;
    }
    case Verb::Up:
    case Verb::Down: {
      auto* ud = dynamic_cast<UpDown*>(c);
      if (!ud) return name + " is not an up-down";
      auto& fn = a.verb == Verb::Up ? ud->UpClick : ud->DownClick;
      noHandler(static_cast<bool>(fn), a.verb == Verb::Up ? "UpClick" : "DownClick");
      if (fn) fn();
      break;
    }
    case Verb::DblClick:
      noHandler(static_cast<bool>(c->DblClick), "DblClick");
      if (c->DblClick) c->DblClick();
      break;
    default:
      break;
  }
  return std::nullopt;
}

std::string ScriptName(const std::string& file) { return file == "-" ? "<stdin>" : file; }

bool LoadScript(const std::string& file, const std::vector<Form*>& forms,
                std::vector<ScriptAction>& out, std::string* error) {
  std::string text;
  if (file == "-") {
    text.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
  } else {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
      *error = "cannot read the script " + file;
      return false;
    }
    std::ostringstream buf;
    buf << in.rdbuf();
    text = buf.str();
  }
  auto bad = ParseScript(text, out);
  if (!bad) bad = ValidateScript(out, forms);
  if (bad) {
    *error = ScriptName(file) + ": " + bad->Text();
    return false;
  }
  return true;
}

}  // namespace amp::ui
