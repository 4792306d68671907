#pragma once

#include "cli/OutputFile.h"

namespace orvantesco::cli {

/// Replaces the stream serial number of a finished Ogg file, which the encoder draws from the
/// clock, by a fixed one on every page, so that equal renders are equal files.
///
/// Page layout and checksum (polynomial 0x04C11DB7, no reflection, from 0) are those of RFC 3533.
void fixOggSerial(OutputFile& file);

}  // namespace orvantesco::cli
