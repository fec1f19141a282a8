#pragma once
#include "text/edit/EditTarget.h"
#include "text/view/TextViewModel.h"

namespace quill {

/// A view as the editing operations see it. The model must have a text while operations run.
class ModelEditTarget : public EditTarget {
 public:
  explicit ModelEditTarget(TextViewModel& model) : m_model(model) {}

  void SetSettings(const EditSettings& settings) { m_settings = settings; }
  void SetOverwriting(bool overwriting) { m_overwriting = overwriting; }

  CCrystalTextBuffer& Buffer() const override { return *m_model.Buffer(); }
  EditSource Source() override { return &m_model; }
  EditSettings Settings() const override { return m_settings; }
  bool IsOverwriting() const override { return m_overwriting; }
  TextPosition Caret() const override { return m_model.Caret(); }
  TextPosition Anchor() const override { return m_model.Anchor(); }
  void Select(TextPosition anchor, TextPosition caret) override { m_model.SetSelection(anchor, caret); }
  bool IsColumnSelection() const override { return m_model.IsColumnSelection(); }
  void SetColumnSelection(bool columns) override { m_model.SetColumnSelection(columns); }
  BlockCorner AnchorCorner() const override { return m_model.AnchorCorner(); }
  BlockCorner CaretCorner() const override { return m_model.CaretCorner(); }
  void SelectBlock(BlockCorner anchor, BlockCorner caret) override { m_model.SetBlock(anchor, caret); }
  int32_t NextShown(int32_t line) const override { return m_model.Folds().NextShown(line); }
  int32_t PreviousShown(int32_t line) const override { return m_model.Folds().PreviousShown(line); }

 private:
  TextViewModel& m_model;
  EditSettings m_settings;
  bool m_overwriting = false;
};

}  // namespace quill
