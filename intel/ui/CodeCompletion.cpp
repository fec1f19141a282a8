#include "intel/ui/CodeCompletion.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QScreen>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>

#include "intel/ui/Popup.h"
#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kMostRows = 10;       ///< shown at once
constexpr int kFewestRows = 5;      ///< a shorter list leaves them blank: the panel needs the height
constexpr int kRowsToMeasure = 20;  ///< the longest names decide about the list's width
constexpr int kIconSize = 16;       ///< logical pixels
constexpr int kTextGap = 4;         ///< before, between and behind icon and name
constexpr int kRowGap = 2;          ///< above and below a row's text
constexpr int kNarrowestList = 140;
constexpr int kWidestList = 360;  ///< where the screen has no more room beside the word
constexpr int kPanelWidth = 280;

/// Draws a row that Enter would not take with an outline instead of a bar.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  bool chosen = false;

  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    return {kNarrowestList, std::max(option.fontMetrics.height(), kIconSize) + 2 * kRowGap};
  }

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool selected = option.state.testFlag(QStyle::State_Selected);
    const QColor bar = option.palette.color(QPalette::Active, QPalette::Highlight);
    if (selected && chosen) painter->fillRect(option.rect, bar);
    if (selected && !chosen) {
      painter->setPen(bar);
      painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
    }
    const QRect icon(option.rect.x() + kTextGap, option.rect.center().y() - kIconSize / 2 + 1, kIconSize,
                     kIconSize);
    index.data(Qt::DecorationRole).value<QIcon>().paint(painter, icon);
    const QRect text = option.rect.adjusted(kIconSize + 2 * kTextGap, 0, -kTextGap, 0);
    const auto role = selected && chosen ? QPalette::HighlightedText : QPalette::Text;
    painter->setPen(option.palette.color(QPalette::Active, role));
    painter->drawText(
        text, Qt::AlignVCenter | Qt::TextSingleLine,
        option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideRight, text.width()));
  }
};

/// The toolkit tells screen readers of each row that becomes the current one as if it had the focus.
class NameList : public QListView {
 public:
  using QListView::QListView;

 protected:
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override {
    QAbstractItemView::currentChanged(current, previous);
  }
};

QLabel* NewPanelLabel(QWidget* parent) {
  auto* label = new QLabel(parent);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

CCodeCompletion::CCodeCompletion(QWidget* owner)
    : QWidget(owner),
      m_view(new NameList(this)),
      m_panel(new QWidget(this)),
      m_heading(NewPanelLabel(m_panel)),
      m_text(NewPanelLabel(m_panel)),
      m_announcer(*m_view) {
  MakePopup(*this);
  m_view->setAccessibleName(UiText(StringId::kCompletionList));
  m_view->setModel(&m_model);
  m_view->setItemDelegate(new RowDelegate(m_view));
  m_view->setUniformItemSizes(true);
  m_view->setFrameShape(QFrame::NoFrame);
  m_view->setFocusPolicy(Qt::NoFocus);
  m_view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  auto* column = new QVBoxLayout(m_panel);
  column->addWidget(m_heading);
  column->addWidget(m_text);
  column->addStretch();
  m_panel->setFixedWidth(kPanelWidth);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(1, 1, 1, 1);
  // `Arrange` gives the size. The layout would hold the window at what the list before needed.
  row->setSizeConstraint(QLayout::SetNoConstraint);
  row->setSpacing(0);
  row->addWidget(m_view);
  row->addWidget(m_panel);
  connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
    ShowDetail();
    Q_EMIT EntryChanged();
  });
  connect(m_view, &QListView::clicked, this, &CCodeCompletion::Clicked);
  connect(m_view, &QListView::doubleClicked, this, &CCodeCompletion::DoubleClicked);
}

void CCodeCompletion::Open(CompletionList list, DetailSource detail, const QFont& font, const QRect& word) {
  m_word = word;
  m_side = PopupSide::kBelow;
  m_view->setFont(font);
  QFont heading = font;
  heading.setBold(true);
  m_heading->setFont(heading);
  SetChosen(false);
  m_model.SetList(std::move(list), std::move(detail));
  SelectRow(0);
  Arrange();
  show();
  raise();
  Q_EMIT EntryChanged();
}

void CCodeCompletion::Narrow(std::string_view begun) {
  SetChosen(false);
  m_model.Narrow(begun);
  if (m_model.rowCount() == 0) {
    hide();
    return;
  }
  SelectRow(0);
  Arrange();
}

void CCodeCompletion::MoveTo(const QRect& word) {
  m_word = word;
  Arrange();
}

void CCodeCompletion::SelectRow(int row) {
  m_view->setCurrentIndex(m_model.index(row));
  m_view->scrollTo(m_model.index(row));
}

void CCodeCompletion::MoveSelection(Move move) {
  const int rows = m_model.rowCount();
  const int page = std::min(rows, kMostRows) - 1;
  int row = m_view->currentIndex().row();
  switch (move) {
    case Move::kUp:
      row = row == 0 ? rows - 1 : row - 1;
      break;
    case Move::kDown:
      row = row == rows - 1 ? 0 : row + 1;
      break;
    case Move::kPageUp:
      row = std::max(0, row - page);
      break;
    case Move::kPageDown:
      row = std::min(rows - 1, row + page);
      break;
  }
  SelectRow(row);
}

void CCodeCompletion::SetChosen(bool chosen) {
  static_cast<RowDelegate*>(m_view->itemDelegate())->chosen = chosen;
  m_view->viewport()->update();
  m_announcer.SetChosen(chosen);
}

std::optional<CompletionEntry> CCodeCompletion::Selected() const {
  const int row = m_view->currentIndex().row();
  if (!isVisible() || row < 0 || row >= m_model.rowCount()) return std::nullopt;
  return m_model.List()->Entry(static_cast<size_t>(row));
}

std::optional<CompletionEntry> CCodeCompletion::OnlyEntry() const {
  return m_model.rowCount() == 1 ? Selected() : std::nullopt;
}

void CCodeCompletion::ShowDetail() {
  const int row = m_view->currentIndex().row();
  if (row < 0 || row >= m_model.rowCount()) return;
  const CompletionDetail detail = m_model.Detail(row);
  m_heading->setText(FromCodePage(detail.heading));
  m_text->setText(FromCodePage(detail.text));
  m_text->setVisible(!detail.text.empty());
  if (m_panel->layout()->heightForWidth(kPanelWidth) > m_panel->height()) Arrange();
}

int CCodeCompletion::WidthOfNames() const {
  int width = 0;
  const QFontMetrics metrics(m_view->font());
  for (const size_t row : m_model.List()->LongestRows(kRowsToMeasure)) {
    width = std::max(width, metrics.horizontalAdvance(FromCodePage(m_model.List()->Name(row))));
  }
  return width;
}

void CCodeCompletion::Arrange() {
  // The names stand below the word that they complete.
  const QRect anchor = m_word.translated(-(kIconSize + 2 * kTextGap + 1), 0);
  const int rows = m_model.rowCount();
  const int width = WidthOfNames() + kIconSize + 3 * kTextGap +
                    (rows > kMostRows ? m_view->verticalScrollBar()->sizeHint().width() : 0);
  const int room = parentWidget()->screen()->availableGeometry().right() - anchor.x() - kPanelWidth - 1;
  m_view->setFixedWidth(std::clamp(width, kNarrowestList, std::max(kWidestList, room)));
  const int listHeight = std::clamp(rows, kFewestRows, kMostRows) * m_view->sizeHintForRow(0);
  const int height = std::max(listHeight, m_panel->layout()->heightForWidth(kPanelWidth));
  const QSize size(m_view->width() + kPanelWidth + 2, height + 2);
  const QRect place = PopupRect(anchor, size, *parentWidget(), m_side);
  m_side = place.y() < anchor.y() ? PopupSide::kAbove : PopupSide::kBelow;
  setGeometry(place);
}

void CCodeCompletion::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  PaintPopup(painter, rect(), palette().color(QPalette::Window), palette().color(QPalette::WindowText));
}

void CCodeCompletion::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  m_announcer.SetChosen(false);
  Q_EMIT EntryChanged();
}

}  // namespace quill
