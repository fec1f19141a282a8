#pragma once
#include <QObject>
#include <QPointer>
#include <functional>
#include <string>

#include "intel/writing/CodeTemplates.h"
#include "text/ui/InputChain.h"
#include "text/ui/TextWatch.h"

class QKeyEvent;

namespace quill {

class CQuillView;

/// Code templates in one view: Tab behind a template's name puts the template there, Tab in a template
/// goes to its next stop, Escape leaves it.
class TemplateKeys : public QObject, private InputTaker {
 public:
  /// Gives the templates as they are at this moment.
  using Source = std::function<const CodeTemplates&()>;

  /// Goes with the view at the latest.
  TemplateKeys(CQuillView& view, Source templates);
  ~TemplateKeys() override;

  /// In the place of the selection, if any. A refusal (read-only text) beeps and says why.
  void Insert(const CodeTemplates& templates, const std::string& name);

 private:
  bool TakeInput(QEvent& event) override;
  /// Whether there is a place left to go to.
  bool IsActive() const { return m_session.IsActive(); }
  bool OnKey(const QKeyEvent& key);
  bool ExpandName();

  CQuillView& m_view;
  QPointer<InputChain> m_input;  ///< of the view
  Source m_templates;
  TemplateSession m_session;
  TextWatch m_watch;
};

}  // namespace quill
