// The JSON state: valid JSON with the controls by name, the messages from a
// given one on, and the dialog in front.
#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "basic/json.h"
#include "frontend/state_json.h"

namespace amp::frontend {
namespace {

struct Panel : ui::Form {
  Panel() : Form("frmMain") {}
  ui::TextBox txtAtnDB{this, "txtAtnDB"};
  ui::ControlArray<ui::Label, 2> FaultAbit{this, "FaultAbit"};
};

struct Dialog : ui::Form {
  Dialog() : Form("frmCom") {}
  ui::ComboBox cbBaud{this, "cbBaud"};
};

QJsonObject Parse(const std::string& text) {
  QJsonParseError e;
  const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(text), &e);
  EXPECT_EQ(e.error, QJsonParseError::NoError) << text;
  return doc.object();
}

TEST(StateJson, HoldsTheFormTheMessagesAndTheDialog) {
  Panel main;
  main.txtAtnDB.SetText("12.5");
  main.FaultAbit[1].SetCaption("Over \"Temp\"\r\n");
  main.FaultAbit[1].SetTop(2);
  std::vector<ShownMessage> messages = {{"Connect", "Unit Not Found", true},
                                        {"Communication Error", "Not in Remote Mode", true}};
  Dialog dlg;
  dlg.cbBaud.AddItem("9600");
  dlg.cbBaud.SetListIndex(0);

  StateView v;
  v.connected = true;
  v.form = &main;
  v.messages = &messages;
  v.firstMessage = 1;
  v.dialog = &dlg;
  const QJsonObject o = Parse(StateJson(v));
  EXPECT_TRUE(o["connected"].toBool());
  const QJsonObject controls = o["form"].toObject()["controls"].toObject();
  EXPECT_EQ(o["form"].toObject()["name"].toString(), "frmMain");
  EXPECT_EQ(controls["txtAtnDB"].toObject()["text"].toString(), "12.5");
  EXPECT_EQ(controls["FaultAbit(1)"].toObject()["caption"].toString(), "Over \"Temp\"\r\n");
  EXPECT_EQ(controls["FaultAbit(1)"].toObject()["top"].toInt(), 2);
  EXPECT_TRUE(controls.contains("FaultAbit(0)"));
  const QJsonArray m = o["messages"].toArray();
  ASSERT_EQ(m.size(), 1);
  EXPECT_EQ(m[0].toObject()["title"].toString(), "Communication Error");
  EXPECT_EQ(m[0].toObject()["text"].toString(), "Not in Remote Mode");
  EXPECT_EQ(o["dialog"].toObject()["name"].toString(), "frmCom");
  EXPECT_EQ(o["dialog"].toObject()["controls"].toObject()["cbBaud"].toObject()["text"].toString(),
            "9600");
}

TEST(StateJson, NoDialogIsNullAndKeysCanBeWrappedByTheCaller) {
  Panel main;
  StateView v;
  v.form = &main;
  JsonWriter w;
  w.BeginObject();
  w.Key("poll").Int(3);
  WriteState(w, v);
  w.EndObject();
  const QJsonObject o = Parse(w.str());
  EXPECT_EQ(o["poll"].toInt(), 3);
  EXPECT_TRUE(o["dialog"].isNull());
  EXPECT_TRUE(o["messages"].toArray().isEmpty());
}

}  // namespace
}  // namespace amp::frontend
