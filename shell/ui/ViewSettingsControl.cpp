#include "shell/ui/ViewSettingsControl.h"

#include <QApplication>
#include <QPalette>

#include "settings/Settings.h"
#include "shell/ViewPreferences.h"
#include "shell/ui/AppServices.h"
#include "shell/ui/ChildFrame.h"
#include "shell/ui/QuillView.h"
#include "shell/ui/Workspace.h"

namespace quill {
namespace {

uint32_t ColourReference(const QColor& colour) {
  return Rgb(static_cast<uint32_t>(colour.red()), static_cast<uint32_t>(colour.green()),
             static_cast<uint32_t>(colour.blue()));
}

}  // namespace

ViewSettingsControl::ViewSettingsControl(AppServices& services, Workspace& workspace, QObject* parent)
    : QObject(parent), m_services(services), m_workspace(workspace) {
  connect(&workspace, &Workspace::WindowAdded, this, [this](CChildFrame* frame) { ApplyTo(frame->View()); });
}

ViewSettings ViewSettingsControl::Read() const {
  const QPalette palette = QApplication::palette();
  return ReadViewSettings(m_services.settings, {ColourReference(palette.color(QPalette::Base)),
                                                ColourReference(palette.color(QPalette::Button))});
}

void ViewSettingsControl::ApplyTo(CCrystalTextView& view) const {
  view.ApplySettings(Read());
}

void ViewSettingsControl::ApplyToAll() const {
  const ViewSettings settings = Read();
  for (CChildFrame* frame : m_workspace.Frames()) frame->View().ApplySettings(settings);
  Q_EMIT Applied();
}

bool ViewSettingsControl::IsOn(const FlagSetting& setting) const {
  return ReadFlag(m_services.settings, setting);
}

void ViewSettingsControl::Toggle(const FlagSetting& setting) const {
  WriteFlag(m_services.settings, setting, !IsOn(setting));
  ApplyToAll();
}

}  // namespace quill
