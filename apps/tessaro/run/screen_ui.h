// Dialogs on the screen, from a library of their own that is loaded when it is asked for.
#pragma once

#include "tolmar/host_ui.h"

#include <memory>
#include <string>

// Unloads nothing: windows may leave threads behind. Null with a message in UTF-8 when this installation has no such
// library, or there is no screen. `console` gets what is printed and must outlive the result.
std::unique_ptr<tolmar::HostUi> openScreenUi(tolmar::HostUi& console, std::string& error);
