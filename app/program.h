// Start-up and the message loop: checks, data folder, one program per data
// folder, splash, main window.
#pragma once

namespace varnowick {

// Runs the program to its end; the process' exit code.
int Main();

}  // namespace varnowick
