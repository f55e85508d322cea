#include "app/input_methods.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <map>

#include "support/failure_of.h"
#include "support/temp_directory.h"
#include "util/text.h"

namespace luming {
namespace {

using Kind = CommandResult::Kind;

constexpr const char* kIsFcitxThere =
    "dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus "
    "org.freedesktop.DBus.NameHasOwner string:org.fcitx.Fcitx5";

/// A session in which some commands answer; all others are missing.
class InputMethodsTest : public ::testing::Test {
 protected:
  void Answer(const std::string& command, const std::string& output) { answers[command] = {Kind::kDone, output}; }
  std::vector<std::string> Titles() {
    std::vector<std::string> titles;
    for (const KeyboardLayout& layout : methods.List()) titles.push_back(layout.description);
    return titles;
  }
  void RunFcitx() {
    const std::string ask =
        "dbus-send --session --print-reply --dest=org.fcitx.Fcitx5 /controller org.fcitx.Fcitx.Controller1.";
    Answer(kIsFcitxThere, "method return time=1\n   boolean true\n");
    Answer("fcitx5-remote -n", "wbx\n");
    Answer(ask + "CurrentInputMethodGroup", "method return time=1 sender=:1.2\n   string \"默认\"\n");
    Answer(
        ask + "InputMethodGroupInfo string:默认",
        "   string \"us\"\n   array [\n      struct {\n         string \"keyboard-us\"\n         string \"\"\n      }\n"
        "      struct {\n         string \"wbx\"\n         string \"us\"\n      }\n"
        "      struct {\n         string \"rime\"\n         string \"\"\n      }\n   ]\n");
    Answer(
        ask + "AvailableInputMethods",
        "   array [\n      struct {\n         string \"wbx\"\n         string \"Wubi\"\n         string \"五笔\"\n"
        "         string \"icon\"\n         string \"五\"\n         string \"zh_CN\"\n         boolean true\n      }\n"
        "      struct {\n         string \"rime\"\n         string \"Rime\"\n         string \"\"\n         string \"\"\n"
        "         string \"\"\n         string \"zh\"\n         boolean true\n      }\n   ]\n");
  }

  /// What activating says.
  std::string Refusal(std::int32_t handle) {
    return WordsOf([&] { methods.Activate(handle); });
  }

  std::map<std::string, CommandResult> answers;
  std::vector<std::string> run;
  InputMethods methods{[this](const std::vector<std::string>& command) {
    run.push_back(Join(command, " "));
    const auto found = answers.find(run.back());
    return found == answers.end() ? CommandResult{} : found->second;
  }};
};

TEST_F(InputMethodsTest, FcitxTellsItsGroup) {
  RunFcitx();
  EXPECT_EQ(Titles(), (std::vector<std::string>{"", "五笔", "Rime"}));
  EXPECT_EQ(methods.Current()->description, "五笔");
  Answer("fcitx5-remote -s rime", "");
  run.clear();
  methods.Activate(InputMethods::HandleOf("rime"));
  EXPECT_EQ(run, (std::vector<std::string>{"fcitx5-remote -s rime"})) << "the list is not asked for again";
}

TEST_F(InputMethodsTest, IbusTellsWhatIsSetUp) {
  Answer("ibus engine", "libpinyin\n");
  Answer("ibus list-engine", "language: 中文\n  libpinyin - 智能拼音\n  wubi86 - 五笔 - 86\nlanguage: English\n");
  Answer("gsettings get org.freedesktop.ibus.general preload-engines", "['xkb:us::eng', 'libpinyin', 'wubi86']\n");
  EXPECT_EQ(Titles(), (std::vector<std::string>{"", "智能拼音", "五笔 - 86"}));
  EXPECT_EQ(methods.Current()->description, "智能拼音");
  Answer("gsettings get org.freedesktop.ibus.general preload-engines", "@as []\n");
  EXPECT_EQ(Titles(), (std::vector<std::string>{"智能拼音"})) << "at least the one in use";
}

TEST_F(InputMethodsTest, WithoutAFrameworkTheDisplaysLayoutsAreOffered) {
  Answer("setxkbmap -query", "rules:      evdev\nmodel:      pc105\nlayout:     us,cn,de\nvariant:    ,tib,\n");
  EXPECT_EQ(Titles(), (std::vector<std::string>{"", "", ""}));
  EXPECT_EQ(methods.Current()->handle, InputMethods::HandleOf("us"));
  run.clear();
  methods.Activate(InputMethods::HandleOf("us"));
  EXPECT_EQ(run, (std::vector<std::string>{"setxkbmap -query"})) << "it is in use already";
  Answer("setxkbmap -layout cn,us,de -variant tib,,", "");
  methods.Activate(InputMethods::HandleOf("cn(tib)"));
  EXPECT_EQ(run.back(), "setxkbmap -layout cn,us,de -variant tib,,");
}

TEST_F(InputMethodsTest, AFrameworkThatIsSwitchedOffIsNotStartedByAsking) {
  RunFcitx();
  Answer(kIsFcitxThere, "method return time=1\n   boolean false\n");
  Answer("setxkbmap -query", "layout:     us\n");
  EXPECT_EQ(Titles(), (std::vector<std::string>{""}));
  for (const std::string& command : run) EXPECT_EQ(command.find("--dest=org.fcitx"), std::string::npos) << command;
}

TEST_F(InputMethodsTest, NothingIsOfferedWhereNothingAnswers) {
  EXPECT_TRUE(methods.List().empty());
  EXPECT_FALSE(methods.Current());
  EXPECT_NO_THROW(methods.Activate(5));
}

TEST_F(InputMethodsTest, ForeignHandlesChangeNothing) {
  RunFcitx();
  methods.List();
  run.clear();
  methods.Activate(0);
  methods.Activate(67699721);
  EXPECT_TRUE(run.empty());
}

TEST_F(InputMethodsTest, ARefusalIsToldEachTimeASilenceOnce) {
  RunFcitx();
  methods.List();
  const std::int32_t rime = InputMethods::HandleOf("rime");
  answers["fcitx5-remote -s rime"] = {Kind::kFailed, ""};
  for (int time = 0; time < 2; ++time) {
    EXPECT_EQ(Refusal(rime), "无法切换到输入法“Rime”：fcitx5 没有接受。");
  }
  answers["fcitx5-remote -s rime"] = {Kind::kTooLate, ""};
  EXPECT_EQ(Refusal(rime), "无法切换到输入法“Rime”：fcitx5 没有响应。");
  EXPECT_EQ(Refusal(rime), "") << "not every field shall wait for it";
  methods.List();
  EXPECT_NE(Refusal(rime), "");
}

TEST(InputMethodHandleTest, HandlesStayTheSameAndAreNeverZero) {
  EXPECT_EQ(InputMethods::HandleOf("pinyin"), 1406255836);
  EXPECT_GT(InputMethods::HandleOf(""), 0);
}

class RunCommandTest : public ::testing::Test {
 protected:
  RunCommandTest() { setenv("PATH", (directory.Path().string() + ":" + path).c_str(), 1); }
  ~RunCommandTest() override { setenv("PATH", path.c_str(), 1); }
  void Script(const char* name, const char* lines) {
    WriteBytes(directory / name, std::string("#!/bin/sh\n") + lines);
    std::filesystem::permissions(directory / name, std::filesystem::perms::owner_all);
  }
  static CommandResult Run(const std::vector<std::string>& command, int milliseconds = 5000) {
    return RunCommand(command, std::chrono::milliseconds(milliseconds));
  }
  TempDirectory directory;
  std::string path = std::getenv("PATH");
};

TEST_F(RunCommandTest, OutputAndArgumentsPassAsTheyAre) {
  Script("echoing", "printf '%s|' \"$@\"; echo noise >&2; cat");
  const CommandResult result = Run({"echoing", "a b", "", "$HOME"});
  EXPECT_EQ(result.kind, Kind::kDone);
  EXPECT_EQ(result.output, "a b||$HOME|");
}

TEST_F(RunCommandTest, WhatFailsIsMissingOrHangsIsTold) {
  Script("failing", "echo half; exit 3");
  Script("hanging", "echo half; exec sleep 60");
  Script("closing", "exec >&-; exec sleep 60");
  EXPECT_EQ(Run({"failing"}).kind, Kind::kFailed);
  EXPECT_EQ(Run({"no-such-program"}).kind, Kind::kMissing);
  EXPECT_EQ(Run({"hanging"}, 200).kind, Kind::kTooLate);
  EXPECT_EQ(Run({"closing"}, 200).kind, Kind::kTooLate) << "its output is closed, it runs on";
}

}  // namespace
}  // namespace luming
