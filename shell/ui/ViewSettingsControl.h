#pragma once
#include <QObject>

#include "text/view/ViewSettings.h"

namespace quill {

class CCrystalTextView;
class Workspace;
struct AppServices;
struct FlagSetting;

/// Hands the settings to the views: to a new one, and to all when something changed.
class ViewSettingsControl : public QObject {
  Q_OBJECT

 public:
  ViewSettingsControl(AppServices& services, Workspace& workspace, QObject* parent);

  /// Read at this moment, with the colours of the desktop's palette for what the user has not chosen.
  ViewSettings Read() const;
  void ApplyTo(CCrystalTextView& view) const;
  void ApplyToAll() const;

  bool IsOn(const FlagSetting& setting) const;
  /// Stores the opposite and shows it in every view.
  void Toggle(const FlagSetting& setting) const;

 Q_SIGNALS:
  /// The settings may have changed, and all views have them.
  void Applied() const;

 private:
  AppServices& m_services;
  Workspace& m_workspace;
};

}  // namespace quill
