#include "desktop/qt_desktop.h"

#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QScreen>
#include <QStyle>
#include <QWindow>
#include <algorithm>

#include "desktop/box_window.h"
#include "desktop/file_dialog.h"
#include "desktop/form_widget.h"
#include "desktop/glyphs.h"
#include "desktop/main_window.h"
#include "desktop/picture_of_desktop.h"
#include "desktop/qt_text.h"
#include "desktop/themes.h"
#include "screen/forms.h"
#include "screen/main_frame.h"
#include "util/text.h"

namespace luming {
namespace {

void CentreOver(QWidget& window, const QWidget* below) {
  const QRect room = window.screen()->availableGeometry();
  QRect place({}, window.size());
  place.moveCenter(below ? below->geometry().center() : room.center());
  if (place.bottom() > room.bottom()) place.moveBottom(room.bottom());
  place.moveTop(std::max(place.top(), room.top()));
  window.move(place.topLeft());
}

/// At the foot of the window below, where it hides least of it.
void StandUnder(QWidget& window, const QWidget* below) {
  CentreOver(window, below);
  const QRect room = window.screen()->availableGeometry();
  const int foot = below ? below->geometry().bottom() : room.bottom();
  window.move(window.x(), std::min(foot, room.bottom() - window.height()));
}

/// Right below the field that is being typed into, or right above it where there is no room below.
void StandAtField(QWidget& window, const QWidget& field) {
  const QRect room = window.screen()->availableGeometry();
  const QRect place(field.mapToGlobal(QPoint(0, 0)), field.size());
  const int height = window.height() + window.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const bool fits_below = place.bottom() + height <= room.bottom();
  const int left = std::min(place.left(), room.right() - window.width());
  window.move(std::max(room.left(), left),
              fits_below ? place.bottom() + 1 : std::max(room.top(), place.top() - height));
}

void StandAt(QWidget& window, const WindowPlace& place) {
  const QRect room = window.screen()->availableGeometry();
  window.move(std::clamp(place.left, room.left(), std::max(room.left(), room.right() - window.width())),
              std::clamp(place.top, room.top(), std::max(room.top(), room.bottom() - window.height())));
}

bool IsFloating(const QWidget& window) {
  return window.windowFlags().testFlag(Qt::WindowStaysOnTopHint);
}

/// The window stays in front of the other without belonging to it, so that each can go first.
void KeepAbove(QWidget& window, const QWidget* below) {
  window.winId();  // makes the window's handle
  window.windowHandle()->setTransientParent(below ? below->windowHandle() : nullptr);
}

void FillMenu(QMenu& menu, const std::vector<MenuEntry>& entries) {
  for (const MenuEntry& entry : entries) {
    if (entry.starts_group) menu.addSeparator();
    if (entry.children.empty()) {
      menu.addAction(glyphs::ForCommand(entry.id), ToQt(entry.caption))->setData(entry.id);
    } else {
      FillMenu(*menu.addMenu(ToQt(entry.caption)), entry.children);
    }
  }
}

/// Keeps a question where the probe finds it, for as long as it waits.
template <class Question>
class Slot {
 public:
  Slot(Question*& place, Question& question) : place_(place), outer_(std::exchange(place, &question)) {}
  ~Slot() { place_ = outer_; }
  Slot(const Slot&) = delete;
  Slot& operator=(const Slot&) = delete;

 private:
  Question*& place_;
  Question* outer_;
};

}  // namespace

QtDesktop::QtDesktop(const std::string& title) : title_(ToQt(title)) {
  QApplication::setQuitOnLastWindowClosed(false);
  QApplication::setWindowIcon(glyphs::OfProgram());
  ApplyTheme(theme_, skin_);
  SetFailureHook([this](const Failure& failure) {
    MsgBox({failure.description() + "\n\n" + std::to_string(failure.number()) + "  " + failure.source(), box::kStop,
            "系统提示"});
  });
}

QtDesktop::~QtDesktop() {
  while (!windows_.empty()) Close(*windows_.begin()->first);
}

QWidget* QtDesktop::Front() const {
  QWidget* active = QApplication::activeWindow();
  if (active && active->isVisible() && std::ranges::count(stack_, active, &QPointer<QWidget>::data) > 0) return active;
  for (auto at = stack_.rbegin(); at != stack_.rend(); ++at) {
    if (*at && (*at)->isVisible() && !IsFloating(**at)) return *at;
  }
  return nullptr;
}

void QtDesktop::Raise(QWidget& window) {
  std::erase_if(stack_, [&](const QPointer<QWidget>& each) { return !each || each == &window; });
  stack_.emplace_back(&window);
  std::stable_partition(stack_.begin(), stack_.end(), [](const QPointer<QWidget>& each) { return !IsFloating(*each); });
  window.show();
  if (QGuiApplication::platformName() != "offscreen") window.raise();
  window.activateWindow();
}

void QtDesktop::ShowBeside(QWidget& window) {
  if (!window.isVisible()) {
    QWidget* const front = Front();
    KeepAbove(window, front);
    window.setWindowModality(front && front->isModal() ? Qt::ApplicationModal : Qt::NonModal);
    CentreOver(window, front);
  }
  Raise(window);
}

void QtDesktop::ActivateFront() {
  QWidget* front = Front();
  if (front && !front->isActiveWindow()) front->activateWindow();
}

Answer QtDesktop::MsgBox(const Box& box) {
  BoxWindow window(box);
  KeepAbove(window, Front());
  window.adjustSize();
  CentreOver(window, Front());
  boxes_.push_back(&window);
  Raise(window);
  struct Closed {
    std::vector<BoxWindow*>& boxes;
    ~Closed() { boxes.pop_back(); }
  } closed{boxes_};
  guard_.Wait(window.Loop());
  window.hide();
  ActivateFront();
  return window.Given();
}

std::optional<std::string> QtDesktop::ChooseFile(const FileRequest& request) {
  FileQuestion question;
  question.request = request;
  FileDialogWindow dialog(request, last_directory_);
  QObject::connect(&dialog, &QDialog::finished, &dialog, [&](int result) {
    if (result == QDialog::Accepted) question.answer = FromQt(dialog.selectedFiles().value(0));
    question.loop.exit();
  });
  const Slot slot(file_question_, question);
  dialog.setWindowModality(Qt::ApplicationModal);
  KeepAbove(dialog, Front());
  Raise(dialog);
  guard_.Wait(question.loop);
  dialog.hide();
  ActivateFront();
  if (question.answer) last_directory_ = QFileInfo(ToQt(*question.answer)).absolutePath();
  return question.answer;
}

std::optional<int> QtDesktop::PopUp(const std::vector<MenuEntry>& entries) {
  QMenu menu;
  FillMenu(menu, entries);
  PopUpQuestion question;
  question.entries = &entries;
  QObject::connect(&menu, &QMenu::triggered, &menu,
                   [&](const QAction* action) { question.answer = action->data().toInt(); });
  // The menu hides ahead of telling what was chosen.
  QObject::connect(&menu, &QMenu::aboutToHide, &question.loop, &QEventLoop::quit, Qt::QueuedConnection);
  const Slot slot(pop_up_question_, question);
  menu.popup(QCursor::pos());
  guard_.Wait(question.loop);
  return question.answer;
}

QtDesktop::Window& QtDesktop::WindowOf(Form& form) {
  return windows_[&form];
}

FormWidget& QtDesktop::WidgetOf(Form& form) {
  Window& window = WindowOf(form);
  if (!window.widget) window.widget = new FormWidget(form, guard_);
  return *window.widget;
}

void QtDesktop::Show(Form& form) {
  if (form.Kind() == WindowKind::kMain) {
    Window& window = WindowOf(form);
    if (!window.main) OpenMain(static_cast<MainFrame&>(form));
    return Raise(*main_);
  }
  FormWidget& widget = WidgetOf(form);
  const bool modal = WindowOf(form).waiting != nullptr;
  if (form.Kind() == WindowKind::kFloating) return ShowFloating(widget);
  if (form.Kind() == WindowKind::kCover) return ShowCover(widget);
  if (form.Kind() != WindowKind::kChild || modal) {
    ShowDialog(widget, modal);
  } else if (main_) {
    main_->workspace().ShowChild(widget);
  }
}

void QtDesktop::OpenMain(MainFrame& frame) {
  main_ = new MainWindow(frame, guard_);
  WindowOf(frame).main = main_;
  CentreOver(*main_, nullptr);
  // Children that the main window opened while it was loading have waited for their place.
  for (Form* form : std::vector<Form*>(frame.Registry().Shown())) {
    if (form->Kind() == WindowKind::kChild) main_->workspace().ShowChild(WidgetOf(*form));
  }
}

QSize QtDesktop::RoomFor(const QWidget& widget) const {
  const QSize screen = widget.screen()->availableSize();
  return main_ ? screen.expandedTo(main_->size()) : screen;
}

void QtDesktop::ShowDialog(FormWidget& widget, bool modal) {
  if (!widget.isVisible()) {
    QWidget* owner = modal ? Front() : main_;
    widget.setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint);
    KeepAbove(widget, owner);
    widget.setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
    if (widget.windowTitle().isEmpty()) widget.setWindowTitle(title_);
    widget.ensurePolished();
    widget.resize(widget.sizeHint().boundedTo(RoomFor(widget)));
    CentreOver(widget, Front());
  }
  Raise(widget);
  widget.RestoreFocus();
}

void QtDesktop::ShowFloating(FormWidget& widget) {
  const Form& form = *widget.form();
  const bool takes_keyboard = form.Registry().Top() == &form;
  if (!widget.isVisible()) {
    widget.setWindowFlags(Qt::Tool | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint);
    KeepAbove(widget, main_);
    widget.setAttribute(Qt::WA_ShowWithoutActivating);
    widget.ensurePolished();
    widget.resize(widget.sizeHint().boundedTo(RoomFor(widget)));
    if (form.Place()) {
      StandAt(widget, *form.Place());
    } else if (const QWidget* field = QApplication::focusWidget(); field && !takes_keyboard) {
      StandAtField(widget, *field);
    } else {
      StandUnder(widget, Front());
    }
    stack_.emplace_back(&widget);
    QWidget* front = QApplication::activeWindow();
    widget.show();
    // Not every window system lets a window appear without the keyboard.
    if (front && !takes_keyboard) front->activateWindow();
  }
  if (!takes_keyboard) return;
  Raise(widget);
  widget.RestoreFocus();
}

std::vector<QPointer<QWidget>> QtDesktop::HideFloating() {
  std::vector<QPointer<QWidget>> hidden;
  for (const QPointer<QWidget>& window : stack_) {
    if (!window || !window->isVisible() || !IsFloating(*window)) continue;
    window->hide();
    hidden.push_back(window);
  }
  return hidden;
}

/// Lies over the whole desktop, and over the program's windows where they reach beyond it.
void QtDesktop::ShowCover(FormWidget& widget) {
  if (!widget.isVisible()) {
    QRect room = widget.screen()->virtualGeometry();
    for (const QPointer<QWidget>& window : stack_) {
      if (!window || !window->isVisible()) continue;
      room |= window->frameGeometry();
    }
    widget.setWindowFlags(Qt::Window | Qt::FramelessWindowHint);
    KeepAbove(widget, Front());
    widget.setWindowModality(Qt::ApplicationModal);
    widget.setGeometry(room);
  }
  Raise(widget);
  widget.RestoreFocus();
}

void QtDesktop::Hide(Form& form) {
  Window& window = WindowOf(form);
  if (window.main) window.main->hide();
  if (window.widget && main_) main_->workspace().HideChild(*window.widget);
  if (window.widget) window.widget->hide();
  if (window.waiting) window.waiting->exit();
  ActivateFront();
}

void QtDesktop::RunModal(Form& form) {
  QEventLoop loop;
  WindowOf(form).waiting = &loop;
  struct Waited {
    std::unordered_map<Form*, Window>& windows;
    Form* form;
    ~Waited() {
      if (const auto found = windows.find(form); found != windows.end()) found->second.waiting = nullptr;
    }
  } waited{windows_, &form};
  std::vector<QPointer<QWidget>> covered;
  if (form.Kind() == WindowKind::kCover) {
    covered = HideFloating();
    ShowCover(WidgetOf(form));
  } else {
    ShowDialog(WidgetOf(form), true);
  }
  guard_.Wait(loop);
  for (const QPointer<QWidget>& window : covered) {
    if (window) window->show();
  }
}

void QtDesktop::Close(Form& form) {
  const auto found = windows_.find(&form);
  if (found == windows_.end()) return;
  const Window window = found->second;
  windows_.erase(found);
  if (window.waiting) window.waiting->exit();
  if (window.main) {
    main_ = nullptr;
    window.main->Detach();
    window.main->hide();
    guard_.Bury(window.main);
  }
  if (window.widget) {
    window.widget->Detach();
    QMdiSubWindow* frame = main_ ? main_->workspace().TakeOut(*window.widget) : nullptr;
    window.widget->hide();
    guard_.Bury(frame ? static_cast<QObject*>(frame) : window.widget);
    ActivateFront();
  }
}

void QtDesktop::Maximise(Form& form) {
  Window& window = WindowOf(form);
  if (window.widget && main_) main_->workspace().MaximiseChild(*window.widget);
}

void QtDesktop::ArrangeChildren(Arrangement arrangement) {
  if (main_) main_->workspace().Arrange(arrangement);
}

void QtDesktop::DoEvents() {
  const bool outer = std::exchange(catching_up_, true);
  QCoreApplication::processEvents();
  if (yielded_) guard_.Enter(yielded_);
  catching_up_ = outer;
  if (guard_.HasEnded()) throw ProcessEnded{};
}

void QtDesktop::ShowProgress(const std::string& what, int done, int total) {
  constexpr int kPatienceInMilliseconds = 500;
  if (done >= total) {
    progress_.reset();
    return;
  }
  if (!progress_) {
    progress_ = std::make_unique<QProgressDialog>();
    progress_->setWindowTitle("请稍候");
    progress_->setCancelButton(nullptr);
    progress_->setMinimumDuration(kPatienceInMilliseconds);
    progress_->setWindowModality(Qt::ApplicationModal);
  }
  progress_->setLabelText(ToQt(what));
  progress_->setMaximum(total);
  // Once it shows, the dialog lets pending events happen.
  const bool was_catching_up = std::exchange(catching_up_, true);
  progress_->setValue(done);
  catching_up_ = was_catching_up;
}

void QtDesktop::AttachSkin(const std::filesystem::path& path) {
  QFile file(ToQt(path.string()));
  if (!file.open(QIODevice::ReadOnly)) return;
  const QByteArray bytes = file.readAll();
  const std::string_view rules(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  if (!IsValidUtf8(rules) || rules.find('\0') != std::string_view::npos) return;
  skin_ = ToQt(rules);
  ApplyTheme(theme_, skin_);
}

void QtDesktop::SetTheme(int theme) {
  theme_ = theme;
  ApplyTheme(theme_, skin_);
}

void QtDesktop::EndProcess() {
  if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  guard_.EndProcess();
}

const Box* QtDesktop::OpenBox() const {
  return boxes_.empty() ? nullptr : &boxes_.back()->Asked();
}

void QtDesktop::AnswerBox(Answer answer) {
  if (!boxes_.empty()) boxes_.back()->Reply(answer);
}

const FileRequest* QtDesktop::OpenFileDialog() const {
  return file_question_ ? &file_question_->request : nullptr;
}

void QtDesktop::AnswerFileDialog(std::optional<std::string> path) {
  if (!file_question_) return;
  file_question_->answer = std::move(path);
  file_question_->loop.exit();
}

const std::vector<MenuEntry>* QtDesktop::OpenPopUp() const {
  return pop_up_question_ ? pop_up_question_->entries : nullptr;
}

void QtDesktop::AnswerPopUp(std::optional<int> id) {
  if (!pop_up_question_) return;
  pop_up_question_->answer = id;
  pop_up_question_->loop.exit();
}

bool QtDesktop::Shot(const std::filesystem::path& file) {
  for (const auto& [form, window] : windows_) {
    if (window.widget) window.widget->Settle();
  }
  return SavePictureOfDesktop(stack_, ToQt(file.string()));
}

}  // namespace luming
