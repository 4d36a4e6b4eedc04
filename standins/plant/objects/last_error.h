// The text of the platform's last error, which hxcom::getLastErrorText gives.
#pragma once

namespace plant {

// `text` lives until the process ends.
void setLastError(const char* text);

}  // namespace plant
