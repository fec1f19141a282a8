#include "shell/ui/StatusPanes.h"

#include <QAccessibleWidget>
#include <QEvent>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

#include "res/ui/UiText.h"

namespace quill {
namespace {

constexpr int kMessageTime = 6000;  ///< milliseconds
constexpr int kSidePadding = 8;
constexpr int kTopPadding = 3;
/// Room for as many digits before a pane has to grow.
constexpr const char* kWideLine = "00000000";
constexpr const char* kWideColumn = "00000";
constexpr const char* kWideZoom = "000";
constexpr const char* kWideMatches = "000 of 000";

QString LineEndName(int style) {
  constexpr StringId kNames[] = {StringId::kLineEndCrLf, StringId::kLineEndLfCr, StringId::kLineEndLf};
  return style >= 0 && style < 3 ? UiText(kNames[style]) : QString();
}

/// A pane as assistive technology sees it: its text, and a button where a click does something.
class AccessiblePane : public QAccessibleWidget {
 public:
  explicit AccessiblePane(StatusPane& pane) : QAccessibleWidget(&pane) {}

  static QAccessibleInterface* Make(const QString&, QObject* object) {
    auto* pane = dynamic_cast<StatusPane*>(object);
    return pane == nullptr ? nullptr : new AccessiblePane(*pane);
  }

  QAccessible::Role role() const override {
    return Pane().Answers() ? QAccessible::Button : QAccessible::StaticText;
  }
  QString text(QAccessible::Text what) const override {
    if (what == QAccessible::Name) return Pane().Text();
    return what == QAccessible::Description ? Pane().Tip() : QAccessibleWidget::text(what);
  }
  QStringList actionNames() const override {
    return Pane().Answers() ? QStringList{pressAction()} : QStringList();
  }
  void doAction(const QString& name) override {
    if (name == pressAction() && Pane().Answers()) Pane().Answer();
  }

 private:
  StatusPane& Pane() const { return *static_cast<StatusPane*>(widget()); }
};

}  // namespace

StatusPane::StatusPane(const QString& widest, QWidget* parent) : QWidget(parent), m_widest(widest) {
  [[maybe_unused]] static const bool once = [] {
    QAccessible::installFactory(AccessiblePane::Make);
    return true;
  }();
  FitTo(widest);
}

void StatusPane::FitTo(const QString& text) {
  const int width = fontMetrics().horizontalAdvance(text) + 2 * kSidePadding;
  if (width > minimumWidth()) setFixedWidth(width);
}

QSize StatusPane::sizeHint() const {
  return {minimumWidth(), fontMetrics().height() + 2 * kTopPadding};
}

void StatusPane::SetText(const QString& text) {
  if (text == m_text) return;
  m_text = text;
  FitTo(text);
  update();
  QAccessibleEvent event(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&event);
}

void StatusPane::SetAnswer(std::function<QString()> tip, std::function<void(QPoint)> run) {
  m_tip = std::move(tip);
  m_run = std::move(run);
  setAttribute(Qt::WA_Hover);
}

bool StatusPane::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip || !Answers()) return QWidget::event(event);
  QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), m_tip(), this);
  return true;
}

void StatusPane::mousePressEvent(QMouseEvent* event) {
  m_pressed = event->button() == Qt::LeftButton && Answers();
  update();
}

void StatusPane::mouseReleaseEvent(QMouseEvent* event) {
  const bool clicked =
      m_pressed && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint());
  m_pressed = false;
  update();
  if (clicked && Answers()) Answer();
}

void StatusPane::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  if (Answers() && (underMouse() || m_pressed)) {
    QColor behind = palette().color(QPalette::WindowText);
    behind.setAlphaF(m_pressed ? 0.2F : 0.1F);
    painter.fillRect(rect().adjusted(1, 0, 0, 0), behind);
  }
  QColor line = palette().color(QPalette::WindowText);
  line.setAlphaF(0.2F);
  painter.fillRect(QRect(0, kTopPadding, 1, height() - 2 * kTopPadding), line);
  style()->drawItemText(&painter, rect(), Qt::AlignCenter, palette(), isEnabled(), m_text,
                        QPalette::WindowText);
}

void StatusPane::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) {
    setMinimumWidth(0);
    FitTo(m_widest);
    FitTo(m_text);
  }
  QWidget::changeEvent(event);
}

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent) {
  m_ready = new QLabel(UiText(StringId::kReady), this);
  m_ready->setContentsMargins(4, 0, 0, 0);
  addWidget(m_ready, 1);
  m_matches = AddPane(kWideMatches);
  m_caret = AddPane(UiText(StringId::kCaretPane, {kWideLine, kWideColumn}));
  m_lineEnd = AddPane(UiText(StringId::kLineEndLfCr));
  m_insert = AddPane(UiText(StringId::kOverwritePane));
  m_readOnly = AddPane(UiText(StringId::kReadOnlyPane));
  m_zoom = AddPane(UiText(StringId::kZoomPane, {kWideZoom}));
  Show(nullptr);
  ShowMatches({});
}

void StatusBar::Tell(const QString& text) {
  showMessage(text, kMessageTime);
}

StatusPane* StatusBar::AddPane(const QString& widest) {
  auto* pane = new StatusPane(widest, this);
  addPermanentWidget(pane);
  return pane;
}

void StatusBar::Show(const StatusFacts* facts) {
  m_lineEnd->setEnabled(facts != nullptr);
  if (facts == nullptr) {
    for (StatusPane* pane : {m_caret, m_lineEnd, m_insert, m_readOnly, m_zoom}) pane->SetText({});
    return;
  }
  m_caret->SetText(
      UiText(StringId::kCaretPane, {QString::number(facts->line), QString::number(facts->column)}));
  m_lineEnd->SetText(LineEndName(facts->lineEndStyle));
  m_insert->SetText(UiText(facts->overwrite ? StringId::kOverwritePane : StringId::kInsertPane));
  m_readOnly->SetText(facts->readOnly ? UiText(StringId::kReadOnlyPane) : QString());
  m_zoom->SetText(UiText(StringId::kZoomPane, {QString::number(facts->zoom)}));
}

void StatusBar::ShowMatches(const QString& text) {
  m_matches->SetText(text);
  m_matches->setVisible(!text.isEmpty());
}

StatusPane& StatusBar::Pane(PaneOf what) const {
  switch (what) {
    case PaneOf::kCaret:
      return *m_caret;
    case PaneOf::kLineEnd:
      return *m_lineEnd;
    case PaneOf::kInsert:
      return *m_insert;
    case PaneOf::kReadOnly:
      return *m_readOnly;
    case PaneOf::kZoom:
      break;
  }
  return *m_zoom;
}

QStringList StatusBar::PaneTexts() const {
  QStringList texts;
  for (StatusPane* pane : {m_caret, m_lineEnd, m_insert, m_readOnly, m_zoom}) texts << pane->Text();
  return texts;
}

}  // namespace quill
