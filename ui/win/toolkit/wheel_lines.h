// How far a turn of the mouse wheel goes.
#pragma once

namespace varnowick {

// The lines to go down for a turn, as the user has set them; `page`: what a whole page
// is, if that is how they are set. Fine wheels turn by less than a line: the rest waits
// for the next turn.
int wheelLines(int delta, int page, int& rest);

}  // namespace varnowick
