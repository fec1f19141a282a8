#include "intel/ui/OutlineList.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QScrollBar>

#include "intel/ui/OutlineLabels.h"
#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {

OutlineList::OutlineList(StringId emptyText, QWidget* parent) : QListView(parent), m_emptyText(emptyText) {
  setModel(&m_model);
  setItemDelegate(new OutlineListDelegate(m_model, this));
  setUniformItemSizes(true);
  setFrameShape(QFrame::NoFrame);
  connect(this, &QListView::clicked, this, [this](const QModelIndex& index) { Activate(index, false); });
  connect(this, &QListView::doubleClicked, this, [this](const QModelIndex& index) {
    if (m_model.RowAt(index.row()).isFile) Activate(index, true);
  });
}

void OutlineList::Show(std::shared_ptr<const ScriptFacts> facts, OutlineRows rows, bool isFiltered,
                       bool keepPlace) {
  const int place = keepPlace ? verticalScrollBar()->value() : 0;
  m_showsScript = true;
  m_isFiltered = isFiltered;
  m_model.Show(std::move(facts), std::move(rows), keepPlace);
  executeDelayedItemsLayout();
  verticalScrollBar()->setValue(place);
}

bool OutlineList::SelectFirst() {
  if (m_model.rowCount() == 0) return false;
  setCurrentIndex(m_model.index(0));
  return true;
}

void OutlineList::Activate(const QModelIndex& index, bool open) {
  if (!index.isValid()) return;
  // A copy: jumping may read the script anew and replace the rows.
  const OutlineRow row = m_model.RowAt(index.row());
  if (row.isFile) {
    Q_EMIT FileChosen({std::string(row.text), row.at}, open);
  } else {
    Q_EMIT Jump({std::string(row.text), row.at, row.file}, row.root);
  }
}

void OutlineList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    ActivateCurrent();
  } else {
    QListView::keyPressEvent(event);
  }
}

void OutlineList::contextMenuEvent(QContextMenuEvent* event) {
  const QModelIndex index = currentIndex();
  if (!index.isValid()) return;
  const OutlineRow row = m_model.RowAt(index.row());
  QMenu menu(this);
  if (row.isFile && IsScriptName(row.text)) {
    menu.addAction(UiText(StringId::kOpenNamedFile), this, [this] { ActivateCurrent(); });
  }
  menu.addAction(UiText(StringId::kCopyName), this,
                 [name = FromCodePage(row.Name())] { QApplication::clipboard()->setText(name); });
  menu.exec(event->globalPos());
}

void OutlineList::paintEvent(QPaintEvent* event) {
  QListView::paintEvent(event);
  if (m_model.rowCount() > 0 || !m_showsScript) return;
  PaintEmptyText(*this, UiText(m_isFiltered ? StringId::kNothingFits : m_emptyText));
}

}  // namespace quill
