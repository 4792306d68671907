#pragma once

#include "host/clap/ClapApi.h"

namespace orvantesco {

/// What a host's scanner reads of the plug-in. Constant; any thread.
const clap_plugin_descriptor_t& clapDescriptor() noexcept;

/// Makes instances. Constant; any thread.
const clap_plugin_factory_t& clapFactory() noexcept;

}  // namespace orvantesco
