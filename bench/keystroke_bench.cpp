#include <benchmark/benchmark.h>

#include <QApplication>
#include <QKeyEvent>
#include <QTableView>
#include <array>
#include <string>
#include <vector>

#include "app/command_table.h"
#include "desktop/qt_desktop.h"
#include "documents/screens.h"
#include "frame/main_window.h"
#include "platform/tracing_connection.h"
#include "rounds.h"
#include "screen/combo_box.h"
#include "screen/grid.h"
#include "screen/text_box.h"
#include "stores.h"
#include "support/app_test.h"

namespace luming::bench {

namespace {

/// What passes between a key and its frame.
enum Part { kSearch, kFill, kLayout, kPaint, kParts };
constexpr std::array<const char*, kParts> kPartNames = {"search_ms", "fill_ms", "layout_ms", "paint_ms"};

/// Hears of the moment at which a table is painted with all the rows that its grid has by then.
class PaintWatch : public QObject {
 public:
  PaintWatch(const QTableView& table, const Grid& grid) : table_(table), grid_(grid) {
    table.viewport()->installEventFilter(this);
  }

  bool painted = false;
  Seconds began;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint && !painted && table_.model()->rowCount() == grid_.MaxRows()) {
      painted = true;
      began = Now();
    }
    return false;
  }

 private:
  const QTableView& table_;
  const Grid& grid_;
};

/// The receipt in the drawn desktop, the keyboard in its search text.
class DrawnReceipt {
 public:
  explicit DrawnReceipt(const StoreCopy& store)
      : app_({desktop_, devices_, printing_, workbooks_, BenchClock()}, store.Home(), {}, MainCommands()),
        screen_(Open(store)),
        watch_(*Find<QTableView>("fpSpread2"), screen_.Field<Grid>("fpSpread2")) {}
  ~DrawnReceipt() {
    app_.forms.UnloadAll();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  DrawnReceipt(const DrawnReceipt&) = delete;
  DrawnReceipt& operator=(const DrawnReceipt&) = delete;

  const Grid& Found() { return screen_.Field<Grid>("fpSpread2"); }

  /// Presses the key and handles events until the frame with what was found is painted.
  std::array<Seconds, kParts> Press(char letter) {
    const bool erases = letter == '\b';
    const int key = erases ? static_cast<int>(Qt::Key_Backspace) : QChar(letter).toUpper().unicode();
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(QChar(letter)));
    watch_.painted = false;
    const Seconds pressed = Now();
    QCoreApplication::sendEvent(QApplication::focusWidget(), &press);
    const Seconds filled = Now();
    while (!watch_.painted) QCoreApplication::processEvents();
    const Seconds painted = Now();
    return {searched_ - pressed, filled - searched_, watch_.began - filled, painted - watch_.began};
  }

 private:
  Form& Open(const StoreCopy& store) {
    app_.Cn =
        std::make_shared<TracingConnection>(store.Connect(), [this](const TracedStatement&) { searched_ = Now(); });
    app_.KFMC = "西药库";
    app_.CurUser.GetUserName = "管理员";
    app_.CurUser.YPGL_YKJYLR = true;
    app_.forms.Get<mainfrm>(app_).Show();
    Form& screen = kReceipt.form(app_);
    screen.Show();
    screen.Field<ComboBox>("CXFS").SetText("拼音码");
    screen.Field<TextBox>("PM").SetFocus();
    QCoreApplication::processEvents();
    return screen;
  }

  template <class WidgetType>
  static WidgetType* Find(const char* name) {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
      if (auto* found = window->findChild<WidgetType*>(name)) return found;
    }
    return nullptr;
  }

  QtDesktop desktop_;
  FakeDevices devices_;
  FakePrinting printing_;
  FakeWorkbooks workbooks_;
  AppContext app_;
  Seconds searched_;
  Form& screen_;
  PaintWatch watch_;
};

/// The last key of a text, in the usual window. Its parts are told in processor's time, which other work on the machine
/// moves least.
void LastKey(benchmark::State& state, const std::string& typed) {
  StoreCopy store;
  GrowCatalogue(store, static_cast<int>(state.range(0)));
  DrawnReceipt receipt(store);
  for (const char letter : typed) receipt.Press(letter);
  std::vector<Seconds> frames;
  std::array<std::vector<Seconds>, kParts> parts;
  while (state.KeepRunning()) {
    receipt.Press('\b');
    Seconds frame;
    const auto took = receipt.Press(typed.back());
    for (std::size_t part = 0; part < kParts; ++part) {
      parts[part].push_back(took[part]);
      frame = {frame.whole + took[part].whole, frame.processor + took[part].processor};
    }
    frames.push_back(frame);
    state.SetIterationTime(frame.whole);
  }
  if (frames.empty()) return;
  constexpr double kMilliseconds = 1e3;
  constexpr double kGoal = 16;
  const Seconds frame = Undisturbed(frames);
  state.counters["rows"] = receipt.Found().MaxRows();
  state.counters["frame_ms"] = frame.whole * kMilliseconds;
  state.counters["processor_ms"] = frame.processor * kMilliseconds;
  for (std::size_t part = 0; part < kParts; ++part) {
    state.counters[kPartNames[part]] = Undisturbed(parts[part]).processor * kMilliseconds;
  }
  if (frame.processor * kMilliseconds > kGoal) state.SetLabel("more than 16 ms");
}

void AsFrames(benchmark::internal::Benchmark* benchmark) {
  benchmark->UseManualTime()->Unit(benchmark::kMillisecond)->ArgName("drugs")->Arg(3000)->Arg(50000);
}

void BM_FrameRarePrefix(benchmark::State& state) {
  LastKey(state, "am");
}
BENCHMARK(BM_FrameRarePrefix)->Apply(AsFrames);

/// 盐酸…, with which one name in eight begins.
void BM_FrameCommonestPrefix(benchmark::State& state) {
  LastKey(state, "ys");
}
BENCHMARK(BM_FrameCommonestPrefix)->Apply(AsFrames);

/// The platform that draws into memory complains of every window operation that it lacks.
void StaySilent(QtMsgType, const QMessageLogContext&, const QString&) {}

}  // namespace

}  // namespace luming::bench

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  qInstallMessageHandler(luming::bench::StaySilent);
  const QApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
