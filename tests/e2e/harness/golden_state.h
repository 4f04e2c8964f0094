// The reference workspace, byte for byte: every kind of record, and hardly a
// setting at its default. It stands as text, and is not built from the rows that
// other tests use, so that neither can hide a fault of the other.
#pragma once

#include <string>

#include "tests/e2e/harness/program_folder.h"

namespace varnowick::e2e {

// As the program writes it: settings, picture and shortcuts on the panel, and an
// open, a folded, a shrunk and a feed container.
DataFiles goldenState();

std::string goldenSettings();
// The files end their lines with CR LF, the texts in the sources with LF.
std::string withCrLf(const std::string& text);

}  // namespace varnowick::e2e
