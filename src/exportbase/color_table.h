// The colour table of the exports: the host's standard palette of 256 indexes.
#pragma once

// Red, green and blue, whole values from 0 to 255. An index outside 0..255 leaves them as they are.
void colorToRgb(int index, float (&rgb)[3]);
