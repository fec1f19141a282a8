#include "widgets/HistoryCombo.h"

#include <QLineEdit>

#include "res/ui/UiText.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

constexpr int kShortest = 24;  ///< characters that the box has room for at least

}  // namespace

HistoryCombo::HistoryCombo(const AppProfile& profile, const ProfileHistory& history, Holds holds,
                           QWidget* parent)
    : QComboBox(parent),
      m_holds(holds),
      m_history(profile, std::string(history.section), std::string(history.prefix)) {
  setEditable(true);
  setInsertPolicy(NoInsert);
  setCompleter(nullptr);  // it would change what is typed
  setMaxVisibleItems(static_cast<int>(HistoryList::kMaxLoaded));
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(kShortest);
  if (holds == Holds::kScriptText) setValidator(new CodePageValidator(this));
}

void HistoryCombo::LoadEntries() {
  m_history.Load();
  ListEntries();
}

void HistoryCombo::SaveText() {
  m_history.Save(Text());
  ListEntries();
}

void HistoryCombo::ListEntries() {
  const QString text = currentText();
  const QSignalBlocker blocker(this);
  clear();
  const size_t count = std::min(m_history.Entries().size(), HistoryList::kMaxLoaded);
  for (size_t i = 0; i < count; ++i) addItem(Shown(m_history.Entries()[i]));
  ShowText(text);
}

QString HistoryCombo::Shown(const std::string& text) const {
  return m_holds == Holds::kPath ? FromBytes(text) : FromCodePage(text);
}

std::string HistoryCombo::Text() const {
  return m_holds == Holds::kPath ? ToBytes(currentText()) : ToCodePage(currentText()).value_or("");
}

void HistoryCombo::SetText(const std::string& text) {
  ShowText(Shown(text));
}

/// The arrow keys go on from the entry with that text, or from before the first one.
void HistoryCombo::ShowText(const QString& text) {
  const QString before = currentText();
  {
    const QSignalBlocker blocker(this);  // between two texts the box is empty for a moment
    setCurrentIndex(findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    setEditText(text);
  }
  if (currentText() != before) Q_EMIT editTextChanged(currentText());
}

void HistoryCombo::FocusText() {
  setFocus(Qt::OtherFocusReason);
  lineEdit()->selectAll();
}

}  // namespace quill
