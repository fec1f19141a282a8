#include "text/ui/PlainTextField.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFontInfo>
#include <QMenu>

#include "res/Commands.h"
#include "res/ui/UiText.h"
#include "settings/SettingsTable.h"

namespace quill {
namespace {

using enum CommandId;

constexpr int kTopPadding = 5;

/// What the main window's menus do for the views of documents.
struct FieldCommand {
  CommandId id;  ///< kNone: a separator
  void (*run)(CCrystalEditView& field);
  bool (*canRun)(const CCrystalEditView& field);
};

bool HasSelection(const CCrystalEditView& field) {
  return field.Model().HasSelection();
}

constexpr FieldCommand kCommands[] = {
    {kEditUndo, [](CCrystalEditView& field) { field.Undo(); },
     [](const auto& field) { return field.CanUndo(); }},
    {kEditRedo, [](CCrystalEditView& field) { field.Redo(); },
     [](const auto& field) { return field.CanRedo(); }},
    {kNone, nullptr, nullptr},
    {kEditCut, [](CCrystalEditView& field) { field.Cut(); }, HasSelection},
    {kEditCopy, [](CCrystalEditView& field) { field.Copy(); }, HasSelection},
    {kEditPaste, [](CCrystalEditView& field) { field.Paste(); },
     [](const auto& field) { return field.CanPaste(); }},
    {kNone, nullptr, nullptr},
    {kEditSelectAll, [](CCrystalEditView& field) { field.SelectAll(); }, [](const auto&) { return true; }},
};

uint32_t Reference(const QColor& colour) {
  return static_cast<uint32_t>(colour.red() | colour.green() << 8 | colour.blue() << 16);
}

QPalette::ColorRole RoleOf(ColourIndex index) {
  switch (index) {
    case kColourBackground:
    case kColourMargin:
      return QPalette::Base;
    case kColourSelectionBackground:
      return QPalette::Highlight;
    case kColourSelectionText:
      return QPalette::HighlightedText;
    default:
      return QPalette::Text;
  }
}

/// Text of any kind in one colour.
ColourTable FieldColours(const QPalette& palette) {
  ColourTable table;
  table.Load({[&palette](const ColourSetting& setting, const DesktopColours&) {
                return Reference(palette.color(QPalette::Active, RoleOf(setting.index)));
              },
              [](const FlagSetting&) { return false; }});
  return table;
}

}  // namespace

PlainTextField::PlainTextField(QWidget* parent) : CCrystalEditView(parent) {
  setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setViewportMargins(0, kTopPadding, 0, 0);
  TakeAppearance();
  AddActions();
  m_buffer.NewBuffer();
  SetBuffer(&m_buffer);
}

PlainTextField::~PlainTextField() {
  SetBuffer(nullptr);
}

void PlainTextField::TakeAppearance() {
  const QFontInfo font(QApplication::font(this));
  ViewSettings settings;
  settings.fontName = font.family().toStdString();
  settings.fontSize = font.pointSize();
  settings.showLineNumbers = false;
  settings.showFolding = false;
  settings.braceMatch = false;
  settings.highlightLine = false;
  settings.indentationGuide = false;
  settings.autoBrackets = false;
  settings.colours = FieldColours(palette());
  ApplySettings(settings);
}

void PlainTextField::changeEvent(QEvent* event) {
  CCrystalEditView::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) TakeAppearance();
}

void PlainTextField::AddActions() {
  for (const FieldCommand& command : kCommands) {
    auto* action = new QAction(this);
    addAction(action);
    if (command.id == kNone) {
      action->setSeparator(true);
      continue;
    }
    const Command& row = *FindCommand(command.id);
    action->setText(UiText(row.menuText.substr(0, row.menuText.find('\t'))));
    QList<QKeySequence> keys;
    for (const std::string_view key : ShortcutsOf(row)) {
      keys << QKeySequence::fromString(UiText(key), QKeySequence::PortableText);
    }
    action->setShortcuts(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, [this, run = command.run] { run(*this); });
  }
}

void PlainTextField::contextMenuEvent(QContextMenuEvent* event) {
  const auto setEnabled = [this](bool all) {
    for (size_t i = 0; i < std::size(kCommands); ++i) {
      if (kCommands[i].id != kNone) {
        actions()[static_cast<qsizetype>(i)]->setEnabled(all || kCommands[i].canRun(*this));
      }
    }
  };
  setEnabled(false);
  const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
  const QPoint place = byMouse ? event->globalPos() : viewport()->mapToGlobal(CaretRect().bottomLeft());
  QMenu::exec(actions(), place, nullptr, this);
  setEnabled(true);  // keys find out by themselves what can be done
}

void PlainTextField::SetText(std::string_view text) {
  m_buffer.NewBuffer(line_end::kCrLf, text);
}

std::string PlainTextField::Text() const {
  std::string text;
  m_buffer.CopyRange({{}, m_buffer.EndOfText()}, text, "\n");
  return text;
}

}  // namespace quill
