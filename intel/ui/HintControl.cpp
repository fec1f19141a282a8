#include "intel/ui/HintControl.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "intel/ui/ActiveScript.h"
#include "intel/ui/CompletionControl.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/ActiveView.h"
#include "widgets/KeyEvents.h"

namespace quill {

HintControl::HintControl(const Needs& needs) : m(needs) {
  connect(&m.completion, &CompletionControl::EntryChanged, this, &HintControl::OnEntryChanged);
  connect(&m.active, &ActiveView::Changed, this, &HintControl::HideTip);
  connect(&m.active, &ActiveView::CaretMoved, this, &HintControl::KeepOffText);
  for (const auto left : {&ActiveView::ScrolledVertically, &ActiveView::LostFocus}) {
    connect(&m.active, left, this, [this] {
      ShowHint({});
      HideTip();  // also when hints do not come by themselves
    });
  }
  m.active.AddTaker(InputTurn::kTip, *this);
  m.window.installEventFilter(this);
}

HintControl::~HintControl() {
  m.active.RemoveTaker(*this);
  delete m_tipWindow;
}

CQuillView* HintControl::View() const {
  return m.active.View();
}

void HintControl::OnEntryChanged() {
  if (m.completion.IsOpen()) {
    if (m_onCommand) HideTip();
    UpdateHintText();
    ShowHint(m_hint.Text());
  }
  KeepOffText();
}

// The hint

bool HintControl::IsCaretInArgumentList() const {
  return View() != nullptr && View()->Model().HasText() &&
         quill::IsCaretInArgumentList(*View()->Buffer(), View()->CaretPos());
}

void HintControl::UpdateHintText() {
  if (View() == nullptr || !View()->Model().HasText()) return;
  const std::optional<std::string> entry = m.completion.SelectedEntry();
  m_hint.Update(*View()->Buffer(), View()->CaretPos(),
                entry ? std::optional<std::string_view>(*entry) : std::nullopt, m.commands,
                m.script.Shown()->outline);
  if (m_hint.Command() >= 0) Q_EMIT CommandFound(m_hint.Command(), m_hint.Argument());
}

void HintControl::ShowHint(const std::string& text) {
  const bool enabled = ReadFlag(m.settings, settings::kHintsWhileWriting);
  switch (m_tip.ShowHint(enabled, IsCaretInArgumentList(), text)) {
    case HintTip::Action::kShow:
      SetTipText(text);
      PlaceTip();
      break;
    case HintTip::Action::kHide:
      m_tipWindow->hide();
      break;
    case HintTip::Action::kNothing:
      if (enabled && m_tip.IsVisible()) SetTipText(text);
      break;
  }
}

void HintControl::ShowOnCommand() {
  UpdateHintText();
  if (m_hint.Text().empty()) {
    if (View() != nullptr) Q_EMIT View()->Hint(UiText(StringId::kNoHint));
    return;
  }
  m_dismissed.clear();
  m_onCommand = true;
  SetTipText(m_hint.Text());
  PlaceTip();
}

void HintControl::ShowForCaret() {
  if (!ReadFlag(m.settings, settings::kHintsWhileWriting)) return;
  m_dismissed.clear();
  UpdateHintText();
  ShowHint(m_hint.Text());
  if (!m_tip.IsVisible() && !m_hint.Text().empty()) ShowOnCommand();
}

// The tip

void HintControl::SetTipText(const std::string& text) {
  if (m_tipWindow == nullptr) m_tipWindow = new HintTipWindow(&m.window);
  m_tipWindow->SetText(text, text == m_hint.Text() ? m_hint.Argument() : TextPart{}, View()->Font());
}

void HintControl::PlaceTip() {
  const CQuillView& view = *View();
  const bool listIsBelow = m.completion.IsOpen() && m.completion.IsBelowCaret();
  const QRect caret = view.CaretRect();
  m_tipWindow->ShowBeside({view.viewport()->mapToGlobal(caret.topLeft()), QSize(0, view.LineHeight())},
                          listIsBelow ? PopupSide::kAbove : PopupSide::kBelow);
}

void HintControl::HideTip() {
  m_onCommand = false;
  m_tip.Dismissed();
  if (m_tipWindow != nullptr) m_tipWindow->hide();
}

void HintControl::KeepOffText() {
  if (m_tipWindow == nullptr || !m_tipWindow->isVisible()) return;
  const QRect line(View()->viewport()->mapToGlobal(QPoint(0, View()->CaretRect().top())),
                   QSize(View()->viewport()->width(), View()->LineHeight()));
  const QRect tip = m_tipWindow->geometry();
  if (tip.intersects(line) || tip.intersects(m.completion.Place())) PlaceTip();
}

// Events

bool HintControl::OnKeyPress(const QKeyEvent& event) {
  if (IsModifierKey(event.key())) return false;
  const bool wasVisible = m_tipWindow != nullptr && m_tipWindow->isVisible();
  if (m_onCommand) HideTip();
  if (event.key() != Qt::Key_Escape || !wasVisible) return false;
  m_dismissed = m_hint.Text();
  HideTip();
  return true;
}

void HintControl::OnKeyRelease() {
  if (m_onCommand) return;
  UpdateHintText();
  const bool dismissed = !m_dismissed.empty() && m_hint.Text() == m_dismissed && IsCaretInArgumentList();
  if (!dismissed) m_dismissed.clear();
  ShowHint(dismissed ? std::string() : m_hint.Text());
}

bool HintControl::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Hide:
    case QEvent::WindowDeactivate:
    case QEvent::WindowStateChange:
      HideTip();
      break;
    default:
      break;
  }
  return QObject::eventFilter(watched, event);
}

bool HintControl::TakeInput(QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
      return OnKeyPress(static_cast<QKeyEvent&>(event));
    case QEvent::KeyRelease:
      if (!static_cast<QKeyEvent&>(event).isAutoRepeat()) OnKeyRelease();
      break;
    case QEvent::MouseButtonRelease: {
      const Qt::MouseButton button = static_cast<QMouseEvent&>(event).button();
      if (m_onCommand) HideTip();
      if (button == Qt::LeftButton) UpdateHintText();
      if (button == Qt::LeftButton || button == Qt::RightButton) {
        ShowHint(IsCaretInArgumentList() ? m_hint.Text() : std::string());
      }
      break;
    }
    case QEvent::Wheel:
      ShowHint({});
      HideTip();
      break;
    default:
      break;
  }
  return false;
}

}  // namespace quill
