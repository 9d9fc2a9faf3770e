// Boxes on the terminal: one line each, answers from the command line, and
// modal forms handed to the script or cancelled.
#include <gtest/gtest.h>

#include <cstdio>

#include "cli/console_dialogs.h"
#include "display/form.h"

namespace amp::cli {
namespace {

std::string Read(std::FILE* f) {
  std::fflush(f);
  std::rewind(f);
  std::string out;
  for (int c; (c = std::fgetc(f)) != EOF;) out += static_cast<char>(c);
  return out;
}

struct TinyDialog : ui::Form {
  TinyDialog() : Form("frmTiny") {}
  ui::CommandButton cmdOK{this, "cmdOK"};
};

TEST(ConsoleBoxes, OneLineShowsEveryKindOfLineEnd) {
  EXPECT_EQ(ConsoleDialogs::OneLine("T", "a\r\nb\rc\nd"), "T: a\\nb\\nc\\nd");
  EXPECT_EQ(ConsoleDialogs::OneLine("Connect", "Unit Not Found"), "Connect: Unit Not Found");
}

TEST(ConsoleBoxes, AnswersFallBackToWhatTheBoxOffers) {
  using B = MsgButtons;
  using R = MsgResult;
  EXPECT_EQ(ConsoleDialogs::Pick(B::OK, R::Cancel), R::OK);
  EXPECT_EQ(ConsoleDialogs::Pick(B::OKCancel, R::Cancel), R::Cancel);
  EXPECT_EQ(ConsoleDialogs::Pick(B::OKCancel, R::Yes), R::OK);
  EXPECT_EQ(ConsoleDialogs::Pick(B::YesNo, R::No), R::No);
  EXPECT_EQ(ConsoleDialogs::Pick(B::YesNo, R::OK), R::Yes);
  EXPECT_EQ(ConsoleDialogs::Pick(B::YesNo, R::Cancel), R::No);
  EXPECT_EQ(ConsoleDialogs::Pick(B::YesNoCancel, R::Cancel), R::Cancel);
  EXPECT_EQ(ConsoleDialogs::Pick(B::RetryCancel, R::OK), R::Retry);
}

TEST(ConsoleBoxes, PrintsRecordsAndMarksFailures) {
  std::FILE* err = std::tmpfile();
  ConsoleDialogs d(err);
  d.answer = MsgResult::No;
  EXPECT_EQ(d.MsgBox("Save?", MsgButtons::YesNo, MsgIcon::Question, "Config"), MsgResult::No);
  EXPECT_FALSE(d.AnyFailure());
  d.MsgBox("Done", MsgButtons::OK, MsgIcon::Information, "Log");
  EXPECT_FALSE(d.AnyFailure());
  d.MsgBox("Not in Remote Mode", MsgButtons::OK, MsgIcon::Exclamation, "Communication Error");
  EXPECT_TRUE(d.AnyFailure());
  ASSERT_EQ(d.shown.size(), 3u);
  EXPECT_EQ(d.shown[2].title, "Communication Error");
  EXPECT_EQ(Read(err), "Config: Save?\nLog: Done\nCommunication Error: Not in Remote Mode\n");
  std::fclose(err);
}

TEST(ConsoleModal, WithoutADriverTheFormIsCancelledThroughItsOwnPath) {
  std::FILE* err = std::tmpfile();
  ConsoleDialogs d(err);
  TinyDialog f;
  int loads = 0, cancels = 0;
  f.Load = [&] { ++loads; };
  f.QueryUnload = [&] {
    ++cancels;
    f.Unload();
  };
  d.ShowModal(f);
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(cancels, 1);
  EXPECT_FALSE(f.Loaded());
  EXPECT_TRUE(d.OpenForms().empty());
  std::fclose(err);
}

TEST(ConsoleModal, TheDriverActsWhileTheFormIsOpenAndAFormLeftOpenIsClosed) {
  std::FILE* err = std::tmpfile();
  ConsoleDialogs d(err);
  TinyDialog f;
  bool okRan = false;
  f.cmdOK.Click = [&] {
    okRan = true;
    f.Unload();
  };
  std::vector<std::string> seen;
  d.modalDriver = [&](ui::Form& form) {
    seen.push_back(form.Name() + (form.Loaded() ? " loaded" : ""));
    ASSERT_EQ(d.OpenForms().size(), 1u);
    form.Find("cmdOK")->RaiseClick();
  };
  d.ShowModal(f);
  EXPECT_TRUE(okRan);
  EXPECT_EQ(seen, std::vector<std::string>{"frmTiny loaded"});

  // A driver that leaves the form up; the form has no cancel path of its
  // own, and must still not stay open.
  d.modalDriver = [](ui::Form&) {};
  d.ShowModal(f);
  EXPECT_FALSE(f.Loaded());
  EXPECT_NE(Read(err).find("frmTiny"), std::string::npos);
  std::fclose(err);
}

}  // namespace
}  // namespace amp::cli
