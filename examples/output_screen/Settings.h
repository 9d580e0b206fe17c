// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class VX_FinalOutputManager;

/// Reads settings out of a JSON file; one that is not there leaves them as they are. False, with a message,
/// for a file that cannot be read as settings.
bool readSettings(const std::string& file, VX_FinalOutputManager* settings);
/// Writes them, in place of what the file held. False, with a message, when that cannot be done.
bool writeSettings(const std::string& file, const VX_FinalOutputManager* settings);
