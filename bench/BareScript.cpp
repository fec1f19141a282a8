// bare_script FILE: a window that shows a script and nothing else, to be measured by the same watch as the
// program.
#include <QApplication>

#include "intel/vocabulary/CommandDatabase.h"
#include "intel/vocabulary/KeywordDatabase.h"
#include "shell/ui/QuillView.h"

int main(int argc, char** argv) {
  using namespace quill;
  const QApplication app(argc, argv);
  KeywordDatabase keywords;
  CommandDatabase commands;
  const std::string folder = QUILL_PROGRAM_FOLDER;
  if (argc != 2 || !keywords.LoadKeywordSets(folder) || !commands.LoadCommandDatabase(folder)) return 1;
  CQuillView view(keywords, commands);
  view.ApplySettings(ViewSettings());
  CCrystalTextBuffer buffer;
  if (!buffer.LoadFile(argv[1])) return 1;
  view.SetBuffer(&buffer);
  view.SetFilePath(argv[1]);
  view.resize(1000, 700);
  view.show();
  const int result = QApplication::exec();
  view.SetBuffer(nullptr);
  return result;
}
