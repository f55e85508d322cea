#include "desktop/box_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/glyphs.h"
#include "desktop/metrics.h"
#include "desktop/qt_text.h"

namespace luming {
namespace {

constexpr int kIconSize = 36;

QString CaptionOf(Answer answer) {
  switch (answer) {
    case Answer::kYes:
      return "是(&Y)";
    case Answer::kNo:
      return "否(&N)";
    case Answer::kCancel:
      return "取消";
    case Answer::kOk:
      break;
  }
  return "确定";
}

}  // namespace

BoxWindow::BoxWindow(const Box& box)
    : QWidget(nullptr, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint),
      box_(box),
      offered_(AnswersOf(box.style)) {
  setObjectName("box");
  setWindowTitle(ToQt(box.title));
  setWindowModality(Qt::ApplicationModal);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->setSizeConstraint(QLayout::SetFixedSize);

  auto* message = new QHBoxLayout;
  message->setContentsMargins(20, 20, 28, 20);
  message->setSpacing(16);
  if (const QIcon icon = glyphs::ForBoxStyle(box.style); !icon.isNull()) {
    auto* mark = new QLabel(this);
    mark->setPixmap(icon.pixmap(QSize(kIconSize, kIconSize), devicePixelRatio()));
    message->addWidget(mark, 0, Qt::AlignTop);
  }
  QString words = ToQt(box.text).remove('\r');
  while (words.endsWith('\n')) words.chop(1);
  auto* text = new QLabel(words, this);
  text->setTextFormat(Qt::PlainText);
  text->setMinimumWidth(metrics::CharactersWidth(*this, 32));
  text->setMaximumWidth(metrics::CharactersWidth(*this, 90));
  text->setWordWrap(text->sizeHint().width() > text->maximumWidth());
  message->addWidget(text, 1);
  column->addLayout(message);

  auto* foot = new QWidget(this);
  foot->setObjectName("boxFoot");
  foot->setAttribute(Qt::WA_StyledBackground);
  auto* buttons = new QHBoxLayout(foot);
  buttons->setContentsMargins(16, 10, 16, 10);
  buttons->addStretch(1);
  AddButtons(*buttons);
  column->addWidget(foot);
}

void BoxWindow::AddButtons(QHBoxLayout& foot) {
  for (const Answer answer : offered_) {
    auto* button = new QPushButton(CaptionOf(answer), foot.parentWidget());
    button->setMinimumWidth(metrics::kButtonWidth);
    if (answer == DefaultAnswer(box_.style)) {
      button->setProperty("role", "default");
      button->setFocus();
    }
    connect(button, &QPushButton::clicked, this, [this, answer] { Reply(answer); });
    foot.addWidget(button);
  }
}

bool BoxWindow::Offers(Answer answer) const {
  return std::ranges::find(offered_, answer) != offered_.end();
}

void BoxWindow::Reply(Answer answer) {
  if (!Offers(answer)) return;
  given_ = answer;
  loop_.exit();
}

bool BoxWindow::ReplyByLetter(int key) {
  const Answer answer = key == Qt::Key_Y ? Answer::kYes : Answer::kNo;
  if ((key != Qt::Key_Y && key != Qt::Key_N) || !Offers(answer)) return false;
  Reply(answer);
  return true;
}

void BoxWindow::Escape() {
  if (Offers(Answer::kCancel)) return Reply(Answer::kCancel);
  if (offered_.size() == 1) Reply(offered_.front());
}

void BoxWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return Escape();
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (auto* button = dynamic_cast<QPushButton*>(focusWidget())) button->click();
    return;
  }
  if (!ReplyByLetter(event->key())) QWidget::keyPressEvent(event);
}

void BoxWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  Escape();
}

}  // namespace luming
