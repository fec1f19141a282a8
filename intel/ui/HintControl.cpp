#include "intel/ui/HintControl.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "intel/ui/ActiveScript.h"
#include "intel/ui/CompletionControl.h"
#include "res/ui/UiText.h"
#include "settings/Settings.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/StatusPanes.h"
#include "shell/ui/ViewHandlers.h"
#include "widgets/KeyEvents.h"

namespace quill {

HintControl::HintControl(const ShellParts& parts, CompletionControl& completion, QObject* parent)
    : ActiveViewWatch(parts, parent), m_parts(parts), m_completion(completion) {
  connect(&completion, &CompletionControl::EntryChanged, this, [this] {
    if (m_completion.IsOpen()) UpdateHintText();
    if (m_completion.IsOpen() && !m_onCommand) ShowHint(m_hint.Text());
    KeepOffText();
  });
}

void HintControl::OnEnter(CQuillView& view) {
  connect(&view, &CCrystalTextView::CaretMoved, this, &HintControl::KeepOffText);
  connect(&view, &CCrystalTextView::ScrolledVertically, this, [this] { ShowHint({}); });
  connect(&view, &CCrystalTextView::LostFocus, this, [this] {
    if (m_onCommand) HideTip();
    ShowHint({});
  });
}

// The hint

bool HintControl::IsCaretInArgumentList() const {
  return View() != nullptr && View()->Model().HasText() &&
         quill::IsCaretInArgumentList(*View()->Buffer(), View()->CaretPos());
}

void HintControl::UpdateHintText() {
  if (View() == nullptr || !View()->Model().HasText()) return;
  const std::optional<std::string> entry = m_completion.SelectedEntry();
  m_hint.Update(*View()->Buffer(), View()->CaretPos(),
                entry ? std::optional<std::string_view>(*entry) : std::nullopt, m_parts.commands,
                m_parts.script.Shown()->outline);
  if (m_hint.Command() >= 0) Q_EMIT CommandFound(m_hint.Command());
}

void HintControl::ShowHint(const std::string& text) {
  const bool enabled = ReadFlag(m_parts.services.settings, settings::kHintsWhileWriting);
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
    m_parts.statusBar.Tell(UiText(StringId::kNoHint));
    return;
  }
  m_dismissed.clear();
  m_onCommand = true;
  SetTipText(m_hint.Text());
  PlaceTip();
}

// The tip

void HintControl::SetTipText(const std::string& text) {
  if (m_tipWindow == nullptr) m_tipWindow = new HintTipWindow(Window());
  m_tipWindow->SetText(text, text == m_hint.Text() ? m_hint.Argument() : TextPart{}, View()->Font());
}

void HintControl::PlaceTip() {
  const CQuillView& view = *View();
  const bool listIsBelow = m_completion.IsOpen() && m_completion.IsBelowCaret();
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
  if (tip.intersects(line) || tip.intersects(m_completion.Place())) PlaceTip();
}

// Events

void HintControl::OnKeyPress(const QKeyEvent& event) {
  if (IsModifierKey(event.key())) return;
  const bool wasVisible = m_tipWindow != nullptr && m_tipWindow->isVisible();
  if (m_onCommand) HideTip();
  if (event.key() == Qt::Key_Escape && wasVisible && !m_completion.IsOpen()) {
    m_dismissed = m_hint.Text();
    HideTip();
  }
}

void HintControl::OnKeyRelease() {
  if (m_onCommand) return;
  UpdateHintText();
  const bool dismissed = !m_dismissed.empty() && m_hint.Text() == m_dismissed && IsCaretInArgumentList();
  if (!dismissed) m_dismissed.clear();
  ShowHint(dismissed ? std::string() : m_hint.Text());
}

bool HintControl::OnViewEvent(QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
      OnKeyPress(static_cast<QKeyEvent&>(event));
      break;
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
      if (m_onCommand) HideTip();
      ShowHint({});
      break;
    default:
      break;
  }
  return false;
}

}  // namespace quill
