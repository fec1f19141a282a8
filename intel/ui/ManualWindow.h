#pragma once
#include <QMainWindow>
#include <memory>
#include <string>

#include "settings/AppProfile.h"

class QHelpContentWidget;
class QSplitter;
class QTabWidget;

namespace quill {

class ManualBook;
class ManualFindBar;
class ManualIndexPane;
class ManualPage;
class ManualSearchPane;

/// The window of the manual: contents, index and search beside a page.
class ManualWindow : public QMainWindow {
  Q_OBJECT

 public:
  ManualWindow(std::unique_ptr<ManualBook> book, const AppProfile& profile);
  ~ManualWindow() override;

  const ManualBook& Book() const { return *m_book; }
  ManualPage& Page() { return *m_page; }
  /// Shows the page of a word of the index, else the start page, and brings the window to the front.
  void Open(const std::string& topic);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void BuildSide();
  void BuildPage();
  void BuildToolBar();
  void AddKeys();
  void RestorePlace();
  void SavePlace();
  void OnPageChanged(const QUrl& url);
  void FocusSide();

  std::unique_ptr<ManualBook> m_book;
  AppProfile m_profile;
  QSplitter* m_splitter;
  QTabWidget* m_side;
  QHelpContentWidget* m_contents;
  ManualIndexPane* m_index;
  ManualSearchPane* m_search;
  ManualPage* m_page;
  ManualFindBar* m_findBar;
};

}  // namespace quill
