// Ctrl-C as the cancel button of the progress dialog.
#pragma once

// From here on the first interrupt is a wish to cancel; the second ends the process.
void catchInterrupt();
bool interrupted();
