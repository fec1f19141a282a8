#pragma once
#include <QObject>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "shell/DocumentFile.h"

namespace quill {

class CChildFrame;
class CQuillDoc;
class Documents;
class Workspace;
struct AppServices;

/// What the user does with files, whole: the document's part, the window's part, and the questions
/// between them.
class FileOperations : public QObject {
  Q_OBJECT

 public:
  FileOperations(AppServices& services, Documents& documents, Workspace& workspace, QObject* parent);

  CQuillDoc& New();
  /// Opens a file, or brings the window that has it to the front, and moves the caret to a line (from 1)
  /// when one is given. Null, and a message, when it cannot be opened.
  CQuillDoc* Open(const std::string& path, int32_t line = 0);
  /// The same for a file that the user named himself: asks whether to create one that does not exist.
  CQuillDoc* OpenOrCreate(const std::string& path, int32_t line = 0);
  void OpenByDialog();
  /// Every kind of save: false when the user changed his mind, or a message was shown.
  bool Save(CQuillDoc& document);
  bool SaveAs(CQuillDoc& document);
  bool SaveAll();
  void Reload(CQuillDoc& document);
  void ToggleReadOnly(CQuillDoc& document);

  /// Asks about unsaved changes and closes the document with all its windows.
  bool Close(CQuillDoc& document);
  /// Closes some of the windows; asks once about the documents that have no other window. False, and
  /// nothing closed, when the user changed his mind.
  bool CloseWindows(const std::vector<CChildFrame*>& frames);
  /// Asks once about all documents with unsaved text. False, and nothing closed, when the user changed his
  /// mind.
  bool CloseAll();

  /// Where file dialogs begin: beside the active document, else where the user was last.
  std::string Folder() const;
  /// For a window that got the focus: asks whether a file that was changed on disk is to be read again.
  void CheckOnDisk(CChildFrame& frame);
  /// The periodic copy of the active document.
  void BackUpActiveDocument();
  /// An earlier run left something unsaved; reads its journals.
  bool HasRecoverable() const;
  /// Offers what an earlier run left unsaved.
  void OfferRecovery();

 private:
  /// `openOnIt`: null, or the other document that is open on the file.
  bool AgreeToReplace(const CQuillDoc& document, const std::string& chosen, const CQuillDoc* openOnIt);
  bool SaveEach(const std::vector<CQuillDoc*>& documents);
  bool IsOpen(const CQuillDoc* document) const;
  bool AgreeToClose(std::vector<CQuillDoc*> documents);
  /// Asks which of the documents to save before they close; nothing when they are to stay open.
  std::optional<std::vector<CQuillDoc*>> ChooseWhatToSave(const std::vector<CQuillDoc*>& unsaved);
  void CloseAs(CQuillDoc& document, DocumentFile::CloseReason reason);
  bool MayClose(CChildFrame& frame);
  void OnWindowClosed(CChildFrame* frame);
  std::string TitleOfRecovered(const std::string& path) const;
  void Recover(RecoverableDocument& lost);
  /// Once in a run, and not over a dialog.
  void TellOfJournals(const std::string& why);
  /// Opens a window on a document, in the place of an untouched new one.
  void ShowInPlaceOf(CQuillDoc* pristine, CQuillDoc& document);
  CQuillDoc* PristineDocument() const;
  bool KeepsBak() const;
  bool Report(const IoResult& saved);

  AppServices& m_services;
  Documents& m_documents;
  Workspace& m_workspace;
  std::string m_lastFolder;
  bool m_toldOfJournals = false;
  /// What was decided about documents that are about to close.
  std::map<const CQuillDoc*, DocumentFile::CloseReason> m_agreed;
};

}  // namespace quill
