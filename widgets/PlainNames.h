#pragma once
#include <QString>
#include <Qt>

/// Names as they are, where the toolkit reads signs in what it shows.
namespace quill::plain_names {

/// For a tip: what looks like markup is shown letter for letter.
inline QString ForTip(const QString& text) {
  if (!Qt::mightBeRichText(text)) return text;
  return "<p style=\"white-space:pre\">" + text.toHtmlEscaped() + "</p>";
}

/// For a menu: "&" is no mnemonic, and a tab character does not begin the key.
inline QString ForMenu(QString text) {
  return text.replace(u'&', "&&").replace(u'\t', u' ');
}

constexpr QChar kJoiner(0x2060);  ///< cannot be seen

/// For the title of a window that tells by "[*]" where its mark of changes goes: "[*]" and "&" in the name
/// are neither that nor a mnemonic.
inline QString ForTitle(QString text) {
  return text.replace("[*]", QString("[") + kJoiner + "*]").replace(u'&', QString("&") + kJoiner);
}

/// Whether a "&" of a window's title stands for itself.
inline bool KeepsAmpersand(const QString& text) {
  return text.contains(QString("&") + kJoiner);
}

}  // namespace quill::plain_names
