#pragma once

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPixmap>
#include <filesystem>
#include <functional>
#include <vector>

#include "desktop/form_widget.h"
#include "platform/desktop.h"

namespace luming {

/// The place of the child forms: tabs as a rule, windows side by side once the operator has arranged them.
class Workspace final : public QMdiArea {
 public:
  explicit Workspace(QWidget* parent);

  /// Right click on the tab of a form; null beside all tabs.
  std::function<void(Form*)> on_tab_menu;
  /// The operator switched to that form.
  std::function<void(Form&)> on_activated;

  /// Takes the form in as a tab, or brings its tab to the front.
  void ShowChild(FormWidget& child);
  void HideChild(FormWidget& child);
  /// The child's tab goes; the form's widget is the caller's to bury, with the frame that is returned. Null when it has
  /// no tab.
  QMdiSubWindow* TakeOut(FormWidget& child);
  void MaximiseChild(FormWidget& child);
  void Arrange(Arrangement arrangement);

  /// Child forms in order of their tabs.
  std::vector<FormWidget*> Children() const;
  FormWidget* ActiveChild() const;
  /// A file that is none, or no picture, leaves the plain background.
  void SetBackPicture(const std::filesystem::path& file);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QMdiSubWindow* FrameOf(const FormWidget& child) const;
  void UseTabs();
  /// A child has gone from the front: the one used before it takes its place, maximised as it was.
  void Uncover(bool maximised);
  void Tile(Qt::Orientation direction);

  QPixmap picture_;
  std::filesystem::path picture_file_;
};

}  // namespace luming
