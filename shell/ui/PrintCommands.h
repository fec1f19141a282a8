#pragma once
#include "shell/ui/Feature.h"

class QMainWindow;
class QPrinter;

namespace quill {

class ActiveView;
struct AppServices;

/// Printing the active document, to paper or into a file.
class PrintCommands : public Feature {
 public:
  PrintCommands(AppServices& services, QMainWindow& window, ActiveView& active)
      : m_services(services), m_window(window), m_active(active) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  void Print();
  void PrintToPdf();
  void PrintTo(QPrinter& printer);
  void SetUpPage();

  AppServices& m_services;
  QMainWindow& m_window;
  ActiveView& m_active;
};

}  // namespace quill
