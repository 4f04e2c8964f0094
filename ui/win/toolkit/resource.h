// Numbers of the program's resources, shared by the resource script and the code.
// Preprocessor names, because the resource compiler reads nothing else.
#pragma once

#define IDI_VARNOWICK 1
#define IDC_HOTSPOT 2

#define VARNOWICK_VERSION_NUMBERS 1, 0, 0, 0
#define VARNOWICK_VERSION_TEXT "1.0.0.0"
