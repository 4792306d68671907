#pragma once

#include "host/clap/ClapPlugin.h"

namespace orvantesco {

/// The functions through which a host reaches an instance. Whatever a host calls, in whatever
/// order: nothing is followed that is null, and no exception passes.
clap_plugin_t clapTableOf(ClapPlugin& plugin) noexcept;

/// The functions of an extension, null for one that there is none of. Any thread.
const void* clapExtension(const char* id) noexcept;

}  // namespace orvantesco
