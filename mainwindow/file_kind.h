#pragma once

#include <string>

/// The two kinds of capture file, as file dialogs tell them apart.
namespace file_kind {

/// What a file dialog offers: "description|pattern".
const char* Filter(bool is20D);
/// Both kinds, the JPEG2000 one first.
std::string SourceFilter();

/// Place of a kind in `SourceFilter`, from 1.
int NumberOfFilter(bool is20D);

}  // namespace file_kind
