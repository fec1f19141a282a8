#include "shell/ui/QuillDoc.h"

#include <algorithm>

#include "res/ui/UiText.h"
#include "shell/ui/QuillView.h"

namespace quill {
namespace {

DocumentServices WithObserver(DocumentServices services, DocumentObserver* observer) {
  services.observer = observer;
  return services;
}

}  // namespace

CQuillDoc::CQuillDoc(DocumentServices services, QObject* parent)
    : QObject(parent), m_file(WithObserver(std::move(services), this)) {}

CQuillDoc::~CQuillDoc() {
  while (!m_views.empty()) DetachView(*m_views.back());
}

QString CQuillDoc::Title() const {
  return FromBytes(m_file.Title());
}

bool CQuillDoc::IsPristine() const {
  return !m_file.HasPath() && !m_file.IsModified() && !Buffer().CanUndo() && !Buffer().CanRedo() &&
         Buffer().EndOfText() == TextPosition{};
}

void CQuillDoc::AttachView(CQuillView& view) {
  view.SetFilePath(m_recordedPath);
  view.SetBuffer(&m_file.Buffer());
  m_views.push_back(&view);
}

void CQuillDoc::DetachView(CQuillView& view) {
  view.SetBuffer(nullptr);
  std::erase(m_views, &view);
}

std::vector<std::string> CQuillDoc::ViewPaths() const {
  std::vector<std::string> paths;
  for (const CQuillView* view : m_views) paths.push_back(view->FilePath());
  return paths;
}

IoResult CQuillDoc::Reload() {
  struct Place {
    CQuillView* view;
    TextPosition caret;
    int32_t topLine;
  };
  std::vector<Place> places;
  for (CQuillView* view : m_views) places.push_back({view, view->CaretPos(), view->TopLine()});
  IoResult reloaded = m_file.Reload();
  for (const Place& place : places) {
    if (m_file.Buffer().LineCount() == 0) break;
    place.view->SetCaretPos(place.caret);
    place.view->ScrollToLine(std::min(place.topLine, m_file.Buffer().LineCount() - 1));
  }
  Q_EMIT StateChanged();
  return reloaded;
}

void CQuillDoc::SetLineEndStyle(int32_t style) {
  m_file.SetLineEndStyle(style);
  Q_EMIT StateChanged();
}

std::optional<DocumentPrompt> CQuillDoc::ToggleReadOnly() {
  std::optional<DocumentPrompt> prompt = m_file.ToggleReadOnly();
  Q_EMIT StateChanged();
  return prompt;
}

void CQuillDoc::OnModifiedChanged(bool) {
  Q_EMIT ModifiedChanged();
}

void CQuillDoc::OnDiskStateChanged() {
  Q_EMIT ModifiedChanged();
}

void CQuillDoc::OnFileRecorded(const std::string& path) {
  m_recordedPath = path;
  for (CQuillView* view : m_views) view->SetFilePath(path);
  Q_EMIT StateChanged();
}

void CQuillDoc::OnPathSet(const std::string& path) {
  Q_EMIT TitleChanged();
  Q_EMIT PathSet(path);
}

}  // namespace quill
