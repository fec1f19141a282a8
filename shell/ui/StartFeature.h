#pragma once
#include <QObject>
#include <QPointer>

#include "res/CommandId.h"
#include "shell/ui/Feature.h"
#include "shell/ui/StartPage.h"

namespace quill {

class ActiveView;
class FileOperations;
class RecentFiles;
class Workspace;

/// Offers on the empty workspace what one may begin with: a new script, a file, what an earlier run left
/// unsaved, the sample game, the files used last.
class StartFeature : public QObject, public Feature {
  Q_OBJECT

 public:
  struct Needs {
    Workspace& workspace;
    ActiveView& active;
    FileOperations& files;
    RecentFiles& recent;
  };
  explicit StartFeature(const Needs& needs);
  ~StartFeature() override;

  void RegisterCommands(CommandRouter& router) override;

 protected:
  /// Of the workspace, which the page covers.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// Once the closing or opening of windows is over.
  void UpdateSoon();
  void Update();
  StartPage::Row CommandRow(CommandId id);
  std::vector<StartPage::Row> BeginRows();
  std::vector<StartPage::Row> RecentRows();

  Needs m;
  CommandRouter* m_router = nullptr;
  QPointer<StartPage> m_page;
};

}  // namespace quill
