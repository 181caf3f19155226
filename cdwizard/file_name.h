#pragma once

#include <string>

/// Whether Windows takes this (UTF-8, trimmed) as the name of a file in a folder, once an ending of
/// four characters stands behind it: not for folders, streams, wild cards or devices.
bool IsFileName(const std::string& name);
