// The panel script: its grammar, the check of a whole script against the
// registered forms, and runs on the application object with fake host parts,
// dialogs included.
#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <memory>

#include "app/amp_desk.h"
#include "cli/cli_session.h"
#include "cli/console_dialogs.h"
#include "display/panel_script.h"
#include "support/fakes.h"

namespace amp::cli {
namespace {

using ui::PanelScript;
using ui::ParseScript;
using ui::ScriptAction;
using ui::ScriptError;
using ui::ValidateScript;

using Verb = ScriptAction::Verb;

// A dialog that arrives after the command line was written: it registers
// with the application and scripts reach it by name.
struct FrmKeys : ui::Form {
  FrmKeys() : Form("frmKeys") {}
  ui::TextBox txtIn{this, "txtIn"};
  ui::UpDown udStep{this, "udStep"};
  ui::ListBox lstPick{this, "lstPick"};
  ui::Label lblInfo{this, "lblInfo"};
  ui::CommandButton cmdClose{this, "cmdClose"};
};

struct Rig {
  test::FakeClock clock;
  test::FakeEventPump pump{clock};
  test::FakeCommPort port{clock};
  ComSlots slots;
  test::FakeTcpSocket sock{pump};
  test::FakeTimer timer;
  std::FILE* err = std::tmpfile();
  ConsoleDialogs dialogs{err};
  MemorySettings settings;
  std::unique_ptr<AmpDesk> desk;

  // What a run saw.
  std::vector<std::string> notes, dumps, ends;
  int ticks = 0;

  Rig() {
    // COM1 stands for a device that exists, so its menu entry is shown.
    slots.Bind(1, "/dev/null");
    desk = std::make_unique<AmpDesk>(
        AmpDeskHost{port, slots, sock, timer, pump, clock, dialogs, settings});
    desk->Form_Load();
  }
  ~Rig() {
    desk.reset();
    std::fclose(err);
  }

  // Parses, checks and runs `text`; the failure of the run, if any.
  std::optional<ScriptError> Run(const std::string& text) {
    std::vector<ScriptAction> actions;
    auto bad = ParseScript(text, actions);
    if (!bad) bad = ValidateScript(actions, desk->Forms());
    EXPECT_FALSE(bad) << bad->Text();
    if (bad) return bad;
    PanelScript::Host h;
    h.forms = desk->Forms();
    h.pollTick = [this] {
      ++ticks;
      timer.Tick();
    };
    h.pollRunning = [this] { return timer.enabled; };
    h.wait = [this](int ms) { pump.WaitForEvents(ms); };
    h.dump = [this](const ui::Form* d) { dumps.push_back(d ? d->Name() : "-"); };
    h.note = [this](const std::string& n) { notes.push_back(n); };
    PanelScript script(std::move(h), std::move(actions));
    script.onEnd = [this](const ui::Form* d) { ends.push_back(d ? d->Name() : "-"); };
    dialogs.modalDriver = [&script](ui::Form& f) { script.RunModal(f); };
    script.Run();
    dialogs.modalDriver = nullptr;
    return script.Failure();
  }
};

// ------------------------------------------------------------------ grammar

TEST(PanelScriptGrammar, ActionsCommentsTextsAndCounts) {
  std::vector<ScriptAction> a;
  const auto bad = ParseScript(
      "# a comment\n"
      "\n"
      "click btnConnect   # connect\n"
      "type txtAtnDB 12.5 # stays in the text\n"
      "KEY txtAtnDB enter\n"
      "set frmCom.cbBaud \"  9600 \"\n"
      "poll\n"
      "poll 3\n"
      "wait 250\r\n"
      "dump\n"
      "key FaultAbit(3) #\n",
      a);
  ASSERT_FALSE(bad) << bad->Text();
  ASSERT_EQ(a.size(), 9u);
  EXPECT_EQ(a[0].line, 3);
  EXPECT_EQ(a[0].verb, Verb::Click);
  EXPECT_EQ(a[0].control, "btnConnect");
  EXPECT_EQ(a[0].form, "");
  EXPECT_EQ(a[1].text, "12.5 # stays in the text");
  EXPECT_EQ(a[2].verb, Verb::Key);
  EXPECT_EQ(a[2].count, 13);
  EXPECT_EQ(a[3].form, "frmCom");
  EXPECT_EQ(a[3].control, "cbBaud");
  EXPECT_EQ(a[3].text, "  9600 ");
  EXPECT_EQ(a[4].count, 1);
  EXPECT_EQ(a[5].count, 3);
  EXPECT_EQ(a[6].verb, Verb::Wait);
  EXPECT_EQ(a[6].count, 250);
  EXPECT_EQ(a[7].verb, Verb::Dump);
  EXPECT_EQ(a[8].control, "FaultAbit(3)");
  EXPECT_EQ(a[8].count, '#');
}

TEST(PanelScriptGrammar, BadLinesNameTheirNumber) {
  struct Case {
    const char* script;
    int line;
    const char* says;
  };
  const Case cases[] = {
      {"click btnConnect\npress btnConnect\n", 2, "unknown action 'press'"},
      {"\n\nclick\n", 3, "click needs a control"},
      {"click # nothing\n", 1, "click needs a control"},
      {"click a b\n", 1, "unexpected 'b'"},
      {"type txtAtnDB\n", 1, "needs a text"},
      {"select cmbRfBand\n", 1, "an item's text or index"},
      {"key txtAtnDB Tab\n", 1, "unknown key 'Tab'"},
      {"key txtAtnDB ab\n", 1, "unknown key 'ab'"},
      {"poll 0\n", 1, "poll takes a count"},
      {"poll many\n", 1, "poll takes a count"},
      {"wait\n", 1, "wait needs a time"},
      {"wait -5\n", 1, "wait takes milliseconds"},
      {"wait 99999999999\n", 1, "wait takes milliseconds"},
      {"dump now\n", 1, "unexpected 'now'"},
      {"click .cmdOK\n", 1, "is not a control name"},
      {"click frmCom.\n", 1, "is not a control name"},
  };
  for (const auto& c : cases) {
    std::vector<ScriptAction> a;
    const auto bad = ParseScript(c.script, a);
    ASSERT_TRUE(bad) << c.script;
    EXPECT_EQ(bad->line, c.line) << c.script;
    EXPECT_NE(bad->message.find(c.says), std::string::npos) << bad->message;
    EXPECT_EQ(bad->Text().rfind("line " + std::to_string(c.line) + ": ", 0), 0u) << bad->Text();
  }
}

// ------------------------------------------------------------------- checks

TEST(PanelScriptCheck, ControlsAreFoundOnTheirFormsAndMustTakeTheAction) {
  Rig rig;
  const auto forms = rig.desk->Forms();
  auto check = [&](const std::string& text) -> std::optional<ScriptError> {
    std::vector<ScriptAction> a;
    if (auto bad = ParseScript(text, a)) return bad;
    return ValidateScript(a, forms);
  };
  EXPECT_FALSE(
      check("click btnConnect\nclick mnuComPort(0)\nselect frmCom.cbBaud 9600\n"
            "click frmCom.optParity(2)\nclick frmAbout.cmdOK\nup UpDown1\ntype txtAtnDB 1\n"
            "dblclick lblSBandFrq\npoll\ndump\n"));
  struct Case {
    const char* script;
    int line;
    const char* says;
  };
  const Case cases[] = {
      {"click btnConnect\nclick txtNope\n", 2, "unknown control 'txtNope' on frmMain"},
      {"click cbBaud\n", 1, "unknown control 'cbBaud' on frmMain"},
      {"click frmNope.cmdOK\n", 1, "no form named 'frmNope' (frmMain, frmCom, frmAbout"},
      {"click frmCom.mnuWatts\n", 1, "unknown control 'mnuWatts' on frmCom"},
      {"select btnConnect 1\n", 1, "select does not apply to btnConnect (a CommandButton)"},
      {"up txtAtnDB\n", 1, "up does not apply to txtAtnDB"},
      {"type FaultAbit(3) x\n", 1, "type does not apply to FaultAbit(3) (a Label)"},
      {"click Timer1\n", 1, "click does not apply to Timer1"},
      {"dblclick mnuWatts\n", 1, "dblclick does not apply"},
      {"focus mnuWatts\n", 1, "focus does not apply"},
  };
  for (const auto& c : cases) {
    const auto bad = check(c.script);
    ASSERT_TRUE(bad) << c.script;
    EXPECT_EQ(bad->line, c.line) << c.script;
    EXPECT_NE(bad->message.find(c.says), std::string::npos) << bad->message;
  }

  // A dialog registered later is addressed like the others.
  FrmKeys keys;
  rig.desk->RegisterForm(keys);
  std::vector<ScriptAction> a;
  ASSERT_FALSE(ParseScript("type frmKeys.txtIn x\nselect frmKeys.lstPick 0\n", a));
  EXPECT_FALSE(ValidateScript(a, rig.desk->Forms()));
  EXPECT_TRUE(ValidateScript(a, forms));  // the copy taken before does not know it
}

// --------------------------------------------------------------------- runs

TEST(PanelScriptRun, ADialogLeftOpenIsReportedOpenThenCancelled) {
  Rig rig;
  const auto failure = rig.Run("click mnuComPort(0)\nselect frmCom.cbBaud 4800\n");
  ASSERT_FALSE(failure) << failure->Text();
  // The end was told while the dialog stood; cancelling kept the settings.
  EXPECT_EQ(rig.ends, std::vector<std::string>{"frmCom"});
  EXPECT_FALSE(rig.desk->frmCom.Loaded());
  EXPECT_EQ(rig.desk->comms.Link.CommSettings(), "9600,N,8,1");
}

TEST(PanelScriptRun, ActionsTheRealPanelWouldRefuseStopTheScript) {
  struct Case {
    const char* script;
    int line;
    const char* says;
  };
  const Case cases[] = {
      // The main panel stands behind the open dialog.
      {"click mnuComPort(0)\nclick mnuWatts\nclick frmCom.cmdOK\n", 2,
       "frmCom is open in front of frmMain"},
      {"click frmCom.cmdOK\n", 1, "frmCom is not open"},
      // Without a session the panel's controls are disabled.
      {"click chkPS\n", 1, "chkPS is disabled"},
      // Only ports that exist have an entry.
      {"click mnuComPort(4)\n", 1, "mnuComPort(4) is hidden"},
      {"click mnuComPort(0)\nselect frmCom.cbBaud 300\n", 2, "has no item '300' (items: '1200'"},
      {"click mnuComPort(0)\nselect frmCom.cbBaud 7\n", 2, "has no item '7'"},
  };
  for (const auto& c : cases) {
    Rig rig;
    const auto failure = rig.Run(c.script);
    ASSERT_TRUE(failure) << c.script;
    EXPECT_EQ(failure->line, c.line) << c.script;
    EXPECT_NE(failure->message.find(c.says), std::string::npos) << failure->message;
    EXPECT_FALSE(rig.desk->frmCom.Loaded());
    EXPECT_EQ(rig.desk->comms.Link.CommSettings(), "9600,N,8,1") << c.script;
    EXPECT_EQ(rig.ends.size(), 1u);
  }
}

TEST(PanelScriptRun, KeysFocusListsUpDownAndDoubleClicksReachTheHandlers) {
  Rig rig;
  FrmKeys keys;
  rig.desk->RegisterForm(keys);
  int gotFocus = 0, lostFocus = 0, up = 0, down = 0, dbl = 0, picks = 0;
  std::vector<int> keysSeen;
  keys.txtIn.KeyPress = [&](int& k) {
    keysSeen.push_back(k);
    if (k >= '0' && k <= '9') k = 0;                // digits are dropped
    if (k >= 'a' && k <= 'z') k = std::toupper(k);  // letters raised
    if (k == 13) keys.Unload();                     // Enter closes
  };
  keys.txtIn.GotFocus = [&] { ++gotFocus; };
  keys.txtIn.Validate = [&](bool& cancel) { cancel = keys.txtIn.Text().empty(); };
  keys.txtIn.LostFocus = [&] { ++lostFocus; };
  keys.udStep.UpClick = [&] { ++up; };
  keys.udStep.DownClick = [&] { ++down; };
  keys.lstPick.AddItem("One");
  keys.lstPick.AddItem("Two");
  keys.lstPick.Click = [&] { ++picks; };
  keys.lblInfo.DblClick = [&] { ++dbl; };
  rig.desk->frmMain.mnuLocateIP.Click = [&] { rig.dialogs.ShowModal(keys); };

  std::string seenText;
  const auto failure = rig.Run(
      "click mnuLocateIP\n"
      "focus frmKeys.txtIn\n"
      "type frmKeys.txtIn ab1c\n"
      "key frmKeys.txtIn Backspace\n"
      "key frmKeys.txtIn x\n"
      "leave frmKeys.txtIn\n"
      "dump\n"
      "set frmKeys.txtIn \"\"\n"
      "leave frmKeys.txtIn\n"
      "set frmKeys.txtIn kept\n"
      "up frmKeys.udStep\n"
      "up frmKeys.udStep\n"
      "down frmKeys.udStep\n"
      "select frmKeys.lstPick Two\n"
      "select frmKeys.lstPick Two\n"
      "select frmKeys.lstPick 0\n"
      "dblclick frmKeys.lblInfo\n"
      "click frmKeys.cmdClose\n"
      "key frmKeys.txtIn Enter\n"
      "dump\n");
  ASSERT_FALSE(failure) << failure->Text();
  EXPECT_EQ(keysSeen, (std::vector<int>{'a', 'b', '1', 'c', 8, 'x', 13}));
  EXPECT_EQ(keys.txtIn.Text(), "kept");
  EXPECT_EQ(gotFocus, 1);
  EXPECT_EQ(lostFocus, 1);  // the empty field kept the focus
  EXPECT_EQ(up, 2);
  EXPECT_EQ(down, 1);
  EXPECT_EQ(picks, 2);  // choosing the chosen item again is no click
  EXPECT_EQ(keys.lstPick.ListIndex(), 0);
  EXPECT_EQ(dbl, 1);
  EXPECT_FALSE(keys.Loaded());
  EXPECT_EQ(rig.dumps, (std::vector<std::string>{"frmKeys", "-"}));
  // A button without a handler and a refused value are told, not hidden.
  ASSERT_EQ(rig.notes.size(), 2u);
  EXPECT_NE(rig.notes[0].find("line 9: frmKeys.txtIn keeps the focus"), std::string::npos)
      << rig.notes[0];
  EXPECT_NE(rig.notes[1].find("line 18: frmKeys.cmdClose has no Click handler"), std::string::npos)
      << rig.notes[1];
}

TEST(PanelScriptRun, EachTypedKeySeesTheTextBeforeIt) {
  Rig rig;
  FrmKeys keys;
  rig.desk->RegisterForm(keys);
  std::vector<std::string> texts;
  keys.txtIn.KeyPress = [&](int&) { texts.push_back(keys.txtIn.Text()); };
  rig.desk->frmMain.mnuLocateIP.Click = [&] { rig.dialogs.ShowModal(keys); };
  const auto failure = rig.Run("click mnuLocateIP\ntype frmKeys.txtIn 1.5\n");
  ASSERT_FALSE(failure) << failure->Text();
  EXPECT_EQ(texts, (std::vector<std::string>{"", "1", "1."}));
  EXPECT_EQ(keys.txtIn.Text(), "1.5");
  // Left open at the end: reported, then closed.
  EXPECT_EQ(rig.ends, std::vector<std::string>{"frmKeys"});
  EXPECT_FALSE(keys.Loaded());
}

TEST(PanelScriptRun, PollTicksOnlyWhileThePollTimerRuns) {
  Rig rig;
  rig.timer.enabled = false;
  ASSERT_FALSE(rig.Run("poll 3\n"));
  EXPECT_EQ(rig.ticks, 0);
  ASSERT_EQ(rig.notes.size(), 1u);
  EXPECT_NE(rig.notes[0].find("3 tick(s) skipped"), std::string::npos);
  rig.timer.enabled = true;
  rig.notes.clear();
  ASSERT_FALSE(rig.Run("poll 2\npoll\n"));
  EXPECT_EQ(rig.ticks, 3);
  EXPECT_TRUE(rig.notes.empty());
}

}  // namespace
}  // namespace amp::cli
