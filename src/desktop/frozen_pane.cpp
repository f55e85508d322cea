#include "desktop/frozen_pane.h"

#include <QHeaderView>
#include <QScrollBar>

namespace luming {

FrozenPane::FrozenPane(GridTable& table, GridPane& main) : main_(main), pane_(new GridPane(table, &main)) {
  pane_->setObjectName("frozen");
  pane_->setFocusPolicy(Qt::NoFocus);
  pane_->setFrameShape(QFrame::NoFrame);
  pane_->verticalHeader()->hide();
  pane_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  pane_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  pane_->hide();
  QObject::connect(main.verticalScrollBar(), &QScrollBar::valueChanged, pane_, [this](int top) {
    following_ = true;
    pane_->verticalScrollBar()->setValue(top);
    following_ = false;
  });
  // The wheel over the frozen columns moves both. A pane that cannot follow as far must not pull the other one back.
  QObject::connect(pane_->verticalScrollBar(), &QScrollBar::valueChanged, pane_, [this](int top) {
    if (!following_ && pane_->isVisible()) main_.verticalScrollBar()->setValue(top);
  });
  QHeaderView* heads = pane_->horizontalHeader();
  QObject::connect(heads, &QHeaderView::sectionClicked, main.horizontalHeader(), &QHeaderView::sectionClicked);
  QObject::connect(heads, &QHeaderView::sectionResized, pane_, [this](int section, int, int width) {
    if (!following_) main_.setColumnWidth(section, width);
  });
}

void FrozenPane::Follow(const Grid& grid) {
  const int frozen = grid.FrozenCols();
  if (frozen == 0) {
    pane_->hide();
    return;
  }
  following_ = true;
  int width = 0;
  for (int col = 0; col < grid.MaxCols(); ++col) {
    const bool shown = col < frozen && !main_.isColumnHidden(col);
    pane_->setColumnHidden(col, !shown);
    if (!shown) continue;
    pane_->setColumnWidth(col, main_.columnWidth(col));
    width += main_.columnWidth(col);
  }
  following_ = false;
  pane_->SettleHeads();
  const int head = main_.horizontalHeader()->height();
  pane_->horizontalHeader()->setFixedHeight(head);
  pane_->setGeometry(main_.frameWidth() + main_.verticalHeader()->width(), main_.frameWidth(), width,
                     head + main_.viewport()->height());
  pane_->verticalScrollBar()->setValue(main_.verticalScrollBar()->value());
  pane_->show();
  pane_->raise();
  pane_->viewport()->update();
}

}  // namespace luming
