#include "intel/ui/HTMLCtrl.h"

#include <QFontDatabase>
#include <QTextBlock>
#include <algorithm>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/HelpText.h"
#include "res/Strings.h"

namespace quill {
namespace {

constexpr int kTextMargin = 8;  ///< pixels
constexpr char kManualLink[] = "manual:";

}  // namespace

CHTMLCtrl::CHTMLCtrl(const CommandDatabase& commands, QWidget* parent)
    : QTextBrowser(parent), m_commands(commands) {
  setFrameShape(QFrame::NoFrame);
  setOpenLinks(false);
  document()->setDocumentMargin(kTextMargin);
  const QString family = QFontDatabase::systemFont(QFontDatabase::FixedFont).family();
  document()->setDefaultStyleSheet(QStringLiteral("h1, h2, h3 { font-size: large; margin-bottom: 4px; }"
                                                  "h2 { font-weight: normal; white-space: pre-wrap; }"
                                                  "pre, code { font-family: '%1'; }")
                                       .arg(family));
  const std::string_view empty = Text(StringId::kEmptyCommandHelp);
  setPlaceholderText(QString::fromLatin1(empty.data(), static_cast<qsizetype>(empty.size())));
  connect(this, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& url) { Follow(url.toString().toStdString()); });
}

void CHTMLCtrl::Follow(const std::string& link) {
  if (link == kManualLink) return Q_EMIT ManualWanted(m_commands.GetCommandName(m_shown));
  ShowCommand(m_commands.FindCommandIndex(std::string(LinkedCommand(link))));
}

void CHTMLCtrl::MarkInHeading(TextPart argument) {
  if (argument == m_argument) return;
  m_argument = argument;
  const auto set = [this](int start, int end, QFont::Weight weight) {
    QTextCursor part(document());
    part.setPosition(start);
    part.setPosition(end, QTextCursor::KeepAnchor);
    QTextCharFormat format;
    format.setFontWeight(weight);
    part.mergeCharFormat(format);
  };
  const int length = document()->firstBlock().length() - 1;
  set(0, length, QFont::Normal);
  set(std::min(static_cast<int>(argument.start), length), std::min(static_cast<int>(argument.end), length),
      QFont::Bold);
}

void CHTMLCtrl::ShowCommand(int32_t index, TextPart argument) {
  if (index < 0) return;
  if (index != m_shown) ShowHelp(index);
  MarkInHeading(argument);
}

void CHTMLCtrl::ShowHelp(int32_t index) {
  m_shown = index;
  m_argument = {};
  std::string html = CommandHelpHtml(m_commands, index);
  html.append("<p><a href=\"").append(kManualLink).append("\">").append(Text(StringId::kOpenInManual));
  setHtml(QString::fromStdString(html.append("</a></p>")));
}

}  // namespace quill
