#pragma once
#include <QObject>
#include <QPointer>
#include <functional>
#include <string>

#include "intel/writing/CodeTemplates.h"
#include "intel/writing/TemplateSession.h"
#include "text/ui/InputChain.h"
#include "text/ui/LineDecoration.h"
#include "text/ui/TextWatch.h"

class QKeyEvent;

namespace quill {

class CQuillView;

/// Code templates in one view: Tab behind a template's name puts the template there, Tab in a template
/// goes to its next stop, Escape leaves it. The places to fill in stand in boxes; what is written in one
/// comes into those of its name, too.
class TemplateKeys : public QObject, private InputTaker, private LineDecoration {
 public:
  /// Gives the templates as they are at this moment.
  using Source = std::function<const CodeTemplates&()>;

  /// Goes with the view at the latest.
  TemplateKeys(CQuillView& view, Source templates);
  ~TemplateKeys() override;
  /// The view is no longer one: what is left is to let these go, too.
  void ForgetView() { m_viewLives = false; }

  /// In the place of the selection, if any. A refusal (read-only text) beeps and says why.
  void Insert(const CodeTemplates& templates, const std::string& name);
  /// Whether there is a place left to go to.
  bool IsActive() const { return m_session.IsActive(); }

 private:
  bool TakeInput(QEvent& event) override;
  bool OnKey(const QKeyEvent& key);
  bool ExpandName();
  void OnCaretMoved();
  /// A closing bracket right behind a field is passed by typing it.
  void ExpectClosers();
  void ShowFields();
  void MarksOf(int32_t line, ColumnRange visible, std::vector<ColumnRange>& marks) const override;

  CQuillView& m_view;
  bool m_viewLives = true;
  QPointer<InputChain> m_input;  ///< of the view
  Source m_templates;
  TemplateSession m_session;
  bool m_fieldsShown = false;
  bool m_filling = false;  ///< places of one name are being made equal
  TextWatch m_watch;
};

}  // namespace quill
