#include "intel/ui/HoverTips.h"

#include <QHelpEvent>
#include <QToolTip>

#include "base/CodePage1252.h"
#include "intel/ui/ActiveScript.h"
#include "res/ui/UiText.h"
#include "shell/ui/ActiveView.h"
#include "widgets/CodePageText.h"

namespace quill {
namespace {

/// The names of a longer script are not looked up for a tip: that would be felt while the mouse only passes.
constexpr int32_t kMostLines = 20000;

QString TipOf(const HoverText& about) {
  // Escaped: nothing of it is to be taken for markup.
  const QString heading = FromCodePage(about.heading).replace(u'\t', u' ').toHtmlEscaped();
  const QString text = (FromCodePage(about.text) + FromBytes(about.where)).toHtmlEscaped();
  return "<p><b>" + heading + "</b>" + (text.isEmpty() ? QString() : "<br>" + text) + "</p>";
}

}  // namespace

HoverTips::HoverTips(ActiveView& active, ActiveScript& script, const CommandDatabase& commands)
    : m_active(active), m_script(script), m_commands(commands) {
  m_active.AddTaker(InputTurn::kTip, *this);
}

HoverTips::~HoverTips() {
  m_active.RemoveTaker(*this);
}

std::optional<HoverText> HoverTips::TextOf(CQuillView& view, TextPosition place,
                                           const std::shared_ptr<const ScriptFacts>& facts) {
  if (facts != m_facts) {
    m_definitions = Definitions(facts->outline);
    m_facts = facts;
  }
  return HoverTextAt(*view.Buffer(), place, view.Model().States().StateAt(place.line),
                     {m_commands, *m_facts, m_definitions, m_script.Reader()});
}

std::optional<HoverText> HoverTips::TextAt(CQuillView& view, TextPosition place) {
  if (view.Buffer()->LineCount() > kMostLines) {
    return TextOf(view, place, std::make_shared<const ScriptFacts>());
  }
  const std::shared_ptr<const ScriptFacts> facts = m_script.Latest();
  std::optional<HoverText> about = TextOf(view, place, facts);
  const std::string_view line = view.Buffer()->Line(place.line);
  if (about || view.Keywords().Contains(cp1252::ToLower(IdentifierAt(line, place.character).In(line)))) {
    return about;
  }
  const std::shared_ptr<const ScriptFacts> all = m_script.LatestWithIncluded();
  return all == facts ? about : TextOf(view, place, all);
}

bool HoverTips::TakeInput(QEvent& event) {
  CQuillView* view = m_active.ViewWithText();
  if (event.type() != QEvent::ToolTip || view == nullptr) return false;
  const QPoint onScreen = static_cast<const QHelpEvent&>(event).globalPos();
  const QPoint mouse = view->viewport()->mapFromGlobal(onScreen);
  const std::optional<HoverText> about = TextAt(*view, view->PositionAt(mouse));
  if (!about) return QToolTip::hideText(), true;
  const int32_t line = view->PositionAt(mouse).line;
  const QRect word(view->PointOf({line, about->word.start}),
                   view->PointOf({line, about->word.end}) + QPoint(-1, view->LineHeight() - 1));
  if (!word.contains(mouse)) return QToolTip::hideText(), true;  // beside the name
  QToolTip::showText(onScreen, TipOf(*about), view->viewport(), word);
  return true;
}

}  // namespace quill
