// The panel model: Click raised by code that changes a value, option button
// groups, list selection limits, the form's name registry, observers and the
// JSON state dump.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include "display/form.h"
#include "display/frm_main.h"

namespace amp::ui {
namespace {

struct TestForm : Form {
  TestForm() : Form("frmTest") {}
  CheckBox chk{this, "chk"};
  OptionButton optA{this, "optA"};
  OptionButton optB{this, "optB"};
  OptionButton optC{this, "optC"};
  ComboBox cmb{this, "cmb"};
  ListBox lst{this, "lst"};
  TextBox txt{this, "txt"};
  ControlArray<Label, 3> lbl{this, "lbl"};
};

// Counts the Click events of a control.
struct Clicks {
  explicit Clicks(Control& c) {
    c.Click = [this] { ++n; };
  }
  int n = 0;
};

TEST(PanelModelClick, CheckBoxValueChangedByCode) {
  TestForm f;
  Clicks clicks(f.chk);
  f.chk.SetValue(1);
  EXPECT_EQ(clicks.n, 1);
  f.chk.SetValue(1);
  EXPECT_EQ(clicks.n, 1);
  f.chk.SetValue(2);  // grayed
  f.chk.SetValue(0);
  EXPECT_EQ(clicks.n, 3);
  EXPECT_THROW(f.chk.SetValue(3), std::invalid_argument);
  EXPECT_EQ(f.chk.Value(), 0);
  EXPECT_EQ(clicks.n, 3);
}

TEST(PanelModelClick, OptionButtonsOfAGroupExcludeEachOther) {
  TestForm f;
  f.optA.SetGroup("g");
  f.optB.SetGroup("g");
  f.optC.SetGroup("other");
  Clicks a(f.optA), b(f.optB), c(f.optC);
  f.optC.SetValue(true);
  f.optA.SetValue(true);
  f.optB.SetValue(true);
  EXPECT_FALSE(f.optA.Value());
  EXPECT_TRUE(f.optB.Value());
  EXPECT_TRUE(f.optC.Value());  // another group is not touched
  // Only setting raises Click; being cleared by the group or by code does not.
  EXPECT_EQ(a.n, 1);
  EXPECT_EQ(b.n, 1);
  f.optB.SetValue(true);
  f.optB.SetValue(false);
  EXPECT_EQ(b.n, 1);
  EXPECT_EQ(c.n, 1);
}

TEST(PanelModelClick, ListIndexMovesAndRefusals) {
  TestForm f;
  for (auto* l : {static_cast<ListControl*>(&f.cmb), static_cast<ListControl*>(&f.lst)}) {
    Clicks clicks(*l);
    l->AddItem("A");
    l->AddItem("B");
    EXPECT_TRUE(l->SetListIndex(1));
    EXPECT_EQ(l->Text(), "B");
    EXPECT_EQ(clicks.n, 1);
    EXPECT_TRUE(l->SetListIndex(1));
    EXPECT_EQ(clicks.n, 1);
    EXPECT_FALSE(l->SetListIndex(2));
    EXPECT_EQ(l->ListIndex(), 1);
    EXPECT_EQ(clicks.n, 1);
    EXPECT_TRUE(l->SetListIndex(-1));
    EXPECT_EQ(l->Text(), "");
    EXPECT_EQ(clicks.n, 2);
  }
}

TEST(PanelModelForm, ControlsAreFoundByName) {
  FrmMain f;
  EXPECT_EQ(f.Find("FaultAbit(3)"), &f.FaultAbit[3]);
  EXPECT_EQ(f.Find("mnuComPort(9)"), &f.mnuComPort[9]);
  EXPECT_EQ(f.Find("FaultAbit"), nullptr);
  EXPECT_EQ(f.Find("FaultAbit(6)"), nullptr);
  EXPECT_EQ(f.Controls().front(), f.Find("btnConnect"));
}

TEST(PanelModelForm, TwoControlsCannotShareAName) {
  struct Clash : Form {
    Clash() : Form("frmClash") {}
    Label a{this, "same"};
    Label b{this, "same"};
  };
  EXPECT_THROW(Clash{}, std::logic_error);
}

TEST(PanelModelForm, ObserversHearChangesOnly) {
  TestForm f;
  std::vector<std::string> heard;
  const int id = f.AddObserver([&](Control* c) { heard.push_back(c ? c->Name() : "form"); });
  f.txt.SetText("x");
  f.txt.SetText("x");
  f.lbl[1].SetVisible(false);
  f.lbl[1].SetVisible(false);
  f.SetCaption("Title");
  EXPECT_EQ(heard, (std::vector<std::string>{"txt", "lbl(1)", "form"}));

  // An observer may remove itself while it is told.
  int selfRemoving = 0;
  int other = 0;
  int selfId = 0;
  selfId = f.AddObserver([&](Control*) {
    ++selfRemoving;
    f.RemoveObserver(selfId);
  });
  f.AddObserver([&](Control*) { ++other; });
  f.RemoveObserver(id);
  f.txt.SetText("y");
  f.txt.SetText("z");
  EXPECT_EQ(selfRemoving, 1);
  EXPECT_EQ(other, 2);
}

// ------------------------------------------------------------ JSON dump

QJsonObject Parse(const std::string& json) {
  QJsonParseError error{};
  const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error);
  EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
  EXPECT_TRUE(doc.isObject());
  return doc.object();
}

TEST(PanelModelDump, ValidJsonWithEveryProperty) {
  FrmMain f;
  f.txtFdBm.SetText("< 12.5 \"dB\"\x03\\");
  f.txtFdBm.SetEnabled(false);
  f.chkPS.SetValue(1);
  f.cmbWgCfg.SetListIndex(5);
  f.FaultAbit[3].SetCaption("Over Temp");
  f.FaultAbit[3].SetForeColor(QBColor(12));
  f.FaultAbit[3].SetTop(4);
  f.FaultAbit[3].SetVisible(false);

  const QJsonObject root = Parse(f.DumpJson());
  EXPECT_EQ(root["name"].toString(), "frmMain");
  EXPECT_EQ(root["caption"].toString(), FrmMain::kTitle);
  const QJsonObject controls = root["controls"].toObject();
  EXPECT_EQ(controls.size(), static_cast<qsizetype>(f.Controls().size()));

  const QJsonObject txt = controls["txtFdBm"].toObject();
  EXPECT_EQ(txt["kind"].toString(), "TextBox");
  EXPECT_EQ(txt["text"].toString(), QString::fromLatin1("< 12.5 \"dB\"\x03\\"));
  EXPECT_FALSE(txt["enabled"].toBool(true));

  EXPECT_EQ(controls["chkPS"].toObject()["value"].toInt(), 1);

  const QJsonObject cmb = controls["cmbWgCfg"].toObject();
  EXPECT_EQ(cmb["listIndex"].toInt(), 5);
  EXPECT_EQ(cmb["text"].toString(), "6 - Standalone w/load");
  EXPECT_EQ(cmb["items"].toArray().size(), 6);

  const QJsonObject label = controls["FaultAbit(3)"].toObject();
  EXPECT_EQ(label["caption"].toString(), "Over Temp");
  EXPECT_EQ(label["foreColor"].toString(), "#ff0000");
  EXPECT_FALSE(label["visible"].toBool(true));

  EXPECT_EQ(controls["mnuWatts"].toObject()["parent"].toString(), "mnuOptions");
  EXPECT_EQ(controls["Timer1"].toObject()["interval"].toInt(), 2500);
  EXPECT_EQ(controls["sbStatusBar"].toObject()["panels"].toArray().size(), 2);
}

}  // namespace
}  // namespace amp::ui
