#pragma once

#include "host/EditorPort.h"
#include "host/clap/ClapHostPort.h"

namespace orvantesco {

/// Stands where the editor will: it passes on what the engine tells an editor that a host has to
/// know as well.
class ClapEditorPort : public EditorPort {
 public:
  ClapEditorPort(ClapHostPort& hostPort, const ClapHost& clapHost) noexcept
      : port(hostPort), host(clapHost) {}

  /// While it lives the engine's parameters are loaded in bulk; the host is told of that as one.
  class Quiet {
   public:
    explicit Quiet(ClapEditorPort& owner) noexcept : editor(owner) { editor.quiet = true; }
    ~Quiet() { editor.quiet = false; }
    Quiet(const Quiet&) = delete;
    Quiet& operator=(const Quiet&) = delete;

   private:
    ClapEditorPort& editor;
  };

  void setKnobValue(int paramIdx, double normalized) noexcept override;
  void refreshTapSelectors(int slot) noexcept override;
  void setKnobSteps(int paramIdx, int steps, double defaultPosition) noexcept override;
  void showMessage(std::string_view text) noexcept override;

 private:
  ClapHostPort& port;
  const ClapHost& host;
  Shared<bool> quiet{false};
};

}  // namespace orvantesco
