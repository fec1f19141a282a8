#pragma once
#include <QIcon>
#include <QWidget>
#include <functional>
#include <vector>

class QVBoxLayout;

namespace quill {

class StartLink;

/// What an empty window shows instead of documents: the program's name, and rows that begin something.
class StartPage : public QWidget {
  Q_OBJECT

 public:
  struct Row {
    QIcon icon;
    QString text;
    QString remark;  ///< fainter, at the right: a key, or a folder
    std::function<void()> run;
  };
  struct Section {
    QString title;
    std::vector<Row> rows;
  };

  explicit StartPage(QWidget* parent);

  /// A section without rows is left out.
  void Show(const std::vector<Section>& sections);
  /// So that the keyboard reaches it at once.
  void FocusFirst();

 private:
  void AddHead(QVBoxLayout& column);
  void AddSection(QVBoxLayout& column, const Section& section);

  QWidget* m_contents = nullptr;
  StartLink* m_first = nullptr;
};

}  // namespace quill
