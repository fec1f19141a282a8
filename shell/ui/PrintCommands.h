#pragma once
#include "shell/ui/Feature.h"

class QPrinter;

namespace quill {

class ActiveView;
struct AppServices;

/// Printing the active document, to paper or into a file.
class PrintCommands : public Feature {
 public:
  PrintCommands(AppServices& services, ActiveView& active) : m_services(services), m_active(active) {}

  void RegisterCommands(CommandRouter& router) override;

 private:
  void Print();
  void PrintToPdf();
  void PrintTo(QPrinter& printer);
  void SetUpPage();

  AppServices& m_services;
  ActiveView& m_active;
};

}  // namespace quill
