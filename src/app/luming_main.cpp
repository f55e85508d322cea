#include <QApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTimer>
#include <QTranslator>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/composition.h"
#include "desktop/qt_desktop.h"
#include "desktop/qt_printing.h"
#include "frame/gateway.h"
#include "script/script_driver.h"

namespace luming {
namespace {

constexpr int kBadUsage = 2;

constexpr const char* kUsage =
    "用法：luming [--home 目录] [--script 文件] [--trace 文件] [连接串$操作员$密码$]\n"
    "  --home 目录    程序目录，缺省为本程序所在的目录\n"
    "  --script 文件  按操作脚本运行\n"
    "  --trace 文件   把发出的每条语句记入文件\n";

struct Options {
  std::filesystem::path home;
  std::filesystem::path script;
  std::filesystem::path trace;
  std::string hand_off;
};

struct BadUsage {
  std::string what;
};

Options ReadOptions(const std::vector<std::string>& arguments) {
  Options options;
  for (std::size_t at = 0; at < arguments.size(); ++at) {
    const std::string& argument = arguments[at];
    std::filesystem::path* named = argument == "--home"     ? &options.home
                                   : argument == "--script" ? &options.script
                                   : argument == "--trace"  ? &options.trace
                                                            : nullptr;
    if (named) {
      if (++at >= arguments.size()) throw BadUsage{argument + " 后面缺少名称。"};
      *named = arguments[at];
    } else if (argument.starts_with("--")) {
      throw BadUsage{"不认识的参数：" + argument};
    } else {
      // The shell has cut the launcher's hand-off at its blanks.
      options.hand_off += (options.hand_off.empty() ? "" : " ") + argument;
    }
  }
  return options;
}

/// Feeds a script to the drawn desktop, one step for each turn of the event loop. A step that waits for a box or a
/// modal form is still on the stack when the next one runs, so each turn is asked for ahead of its step.
class ScriptRunner {
 public:
  ScriptRunner(QtDesktop& desktop, Program& program)
      : desktop_(desktop), driver_(desktop, program, std::cout, std::cerr) {
    desktop.SetFailureHook([this](const Failure& failure) { driver_.Stop(failure.description()); });
    desktop.SetYieldHook([this] { driver_.Yielded(); });
  }

  int Run(const std::filesystem::path& script) {
    driver_.ReadFile(script);
    while (!finished_) {
      desktop_.StartAnew();  // a script goes on when the process has ended, and may start the next
      AskForTurn();
      desktop_.Run();
    }
    return driver_.ExitCode();
  }

 private:
  void AskForTurn() {
    if (std::exchange(asked_, true)) return;
    QTimer::singleShot(0, qApp, [this] { TakeTurn(); });
  }
  void TakeTurn() {
    asked_ = false;
    desktop_.Enter([this] {
      AskForTurn();
      if (desktop_.IsCatchingUp() || driver_.Step()) return;
      finished_ = true;
      desktop_.EndProcess();
    });
  }

  QtDesktop& desktop_;
  ScriptDriver driver_;
  bool asked_ = false;
  bool finished_ = false;
};

int RunProgram(const Options& options) {
  const bool by_hand = options.script.empty();
  QtDesktop desktop(AppContext::kTitle);
  QtPrinting printing(desktop, by_hand ? QtPrinting::Printer::kReal : QtPrinting::Printer::kNone);
  Program program(desktop, printing, by_hand ? Machine::kReal : Machine::kUntouched,
                  options.home.empty() ? ProgramDirectory() : options.home);
  if (!options.trace.empty()) program.TraceTo(options.trace);
  if (!options.script.empty()) return ScriptRunner(desktop, program).Run(options.script);
  desktop.SetFailureHook([&](const Failure& failure) { ShowDbError(*program.Context(), failure); });
  desktop.Enter([&] { program.Start(options.hand_off); });
  desktop.Run();
  return 0;
}

/// The platform that draws into memory complains of every window operation that it lacks.
void LogWithoutNoise(QtMsgType, const QMessageLogContext&, const QString& message) {
  if (!message.startsWith("This plugin does not support")) std::cerr << message.toStdString() << '\n';
}

/// Without a display the program draws into memory, which is enough for scripts and their pictures.
void ChoosePlatform() {
  const bool has_display = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
  if (!has_display && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (qgetenv("QT_QPA_PLATFORM") == "offscreen") qInstallMessageHandler(LogWithoutNoise);
}

int Main(int argc, char** argv) {
  ChoosePlatform();
  QApplication application(argc, argv);
  QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
  QTranslator translator;
  if (translator.load("qtbase_zh_CN", QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QCoreApplication::installTranslator(&translator);
  }
  std::vector<std::string> arguments;
  for (const QString& argument : QCoreApplication::arguments().mid(1)) arguments.push_back(argument.toStdString());
  try {
    return RunProgram(ReadOptions(arguments));
  } catch (const BadUsage& usage) {
    std::cerr << usage.what << '\n' << kUsage;
  } catch (const std::exception& fault) {
    std::cerr << AsFailure(fault).description() << '\n';
  }
  return kBadUsage;
}

}  // namespace
}  // namespace luming

int main(int argc, char** argv) {
  return luming::Main(argc, argv);
}
