#include "app/system_devices.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

#include "support/temp_directory.h"
#include "util/failure.h"

namespace luming {
namespace {

using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

class SystemDevicesTest : public ::testing::Test {
 protected:
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  std::optional<Moment> set;
  bool allowed = true;
  TempDirectory library;
  SystemDevices devices{clock, VoiceLibrary({library / "none", library.Path()}), [this](Moment moment) {
                          set = moment;
                          return allowed;
                        }};
};

TEST_F(SystemDevicesTest, ClockIsLeftAloneWithinTwoSeconds) {
  for (const int second : {58, 59, 60, 61, 62}) {
    devices.SetClock(DateTime(2026, 3, 1, 9, 59, 0).AddSeconds(second));
    EXPECT_FALSE(set) << second;
  }
  allowed = false;
  EXPECT_NO_THROW(devices.SetClock(clock.Now())) << "nothing to do needs no right";
}

TEST_F(SystemDevicesTest, ClockFurtherAwayIsSetInTheLocalZone) {
  setenv("TZ", "Asia/Shanghai", 1);
  tzset();
  devices.SetClock(DateTime(2026, 3, 1, 10, 0, 3, 250));
  unsetenv("TZ");
  tzset();
  ASSERT_TRUE(set);
  EXPECT_EQ(*set, Moment(std::chrono::sys_days(std::chrono::year(2026) / 3 / 1) + std::chrono::hours(2) +
                         std::chrono::milliseconds(3250)));
}

TEST_F(SystemDevicesTest, RefusedClockIsAFailure) {
  allowed = false;
  EXPECT_THROW(devices.SetClock(DateTime(2026, 3, 1, 11, 0, 0)), Failure);
}

TEST_F(SystemDevicesTest, TheEmbeddedDatabaseHeadsTheListOfServers) {
  EXPECT_EQ(devices.ListServers().front(), "(localdb)");
}

TEST_F(SystemDevicesTest, MissingProgramsAndDocumentsAreFailures) {
  TempDirectory directory;
  EXPECT_THROW(devices.OpenDocument(directory / "manual.chm"), Failure);
  EXPECT_THROW(devices.StartProgram(directory / "program"), Failure);
  const std::string path = std::getenv("PATH");
  setenv("PATH", directory.Path().c_str(), 1);
  EXPECT_THROW(devices.StartProgram("/usr/bin/calc.exe"), Failure);
  WriteBytes(directory / "manual.chm", "x");
  EXPECT_THROW(devices.OpenDocument(directory / "manual.chm"), Failure) << "no program opens documents here";
  setenv("PATH", path.c_str(), 1);
}

TEST_F(SystemDevicesTest, TheVoiceDeviceGetsItsTextsInTheSystemsCodePage) {
  devices.dsbdll(1, "nobody hears this");
  std::filesystem::copy_file(LUMING_VOICE_LIBRARY, library / "libcky95h.so");
  setenv("LUMING_VOICE_LOG", (library / "log").c_str(), 1);
  devices.dsbdll(1, "J12.5");
  devices.dsbdll(1, "收");
  EXPECT_EQ(ReadBytes(library / "log"), "1 J12.5|1 \xCA\xD5|");
}

/// A machine on which the named programs write what they were called with into a file.
class LaunchTest : public SystemDevicesTest {
 protected:
  LaunchTest() { setenv("PATH", directory.Path().c_str(), 1); }
  ~LaunchTest() override { setenv("PATH", path.c_str(), 1); }
  void Install(const std::string& name) {
    // A half-written file must not be read: it gets its name when it is whole.
    WriteBytes(directory / name, "#!/bin/sh\nprintf '%s|' " + name + " \"$@\" >" + (directory / "part").string() +
                                     "\n/bin/mv " + (directory / "part").string() + " " + File().string() + "\n");
    std::filesystem::permissions(directory / name, std::filesystem::perms::owner_all);
  }
  std::filesystem::path File() const { return directory / "called"; }
  /// What the program left behind wrote; waits for it.
  std::string Called() {
    for (int turn = 0; turn < 500 && !std::filesystem::exists(File()); ++turn) ::usleep(10000);
    const std::string called = ReadBytes(File());
    std::filesystem::remove(File());
    return called;
  }
  TempDirectory directory;
  std::string path = std::getenv("PATH");
};

TEST_F(LaunchTest, TheDesktopsOwnCalculatorStarts) {
  Install("xcalc");
  devices.StartProgram("/usr/bin/calc.exe");
  EXPECT_EQ(Called(), "xcalc|");
  Install("kcalc");
  devices.StartProgram("/usr/bin/calc.exe");
  EXPECT_EQ(Called(), "kcalc|") << "the better one of two";
}

TEST_F(LaunchTest, DocumentsOpenUnderTheirWholeName) {
  Install("xdg-open");
  WriteBytes(directory / "用户 手册$(x).chm", "x");
  devices.OpenDocument(directory / "用户 手册$(x).chm");
  EXPECT_EQ(Called(), "xdg-open|" + (directory / "用户 手册$(x).chm").string() + "|");
}

}  // namespace
}  // namespace luming
