// What the wrapper calls to build an instance.

#include "host/dpf/DpfPlugin.h"
#include "host/dpf/StartSettings.h"

START_NAMESPACE_DISTRHO

Plugin* createPlugin() {
  auto* const plugin = new orvantesco::DpfPlugin();  // the wrapper deletes it
  if (auto* const instance = plugin->instance())
    orvantesco::startSettings().applyTo(instance->effect);
  return plugin;
}

END_NAMESPACE_DISTRHO
