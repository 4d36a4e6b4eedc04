// The functions that the module offers to the project's script.
#pragma once

class HextGlibScriptor;

// Enters _ALERT, hxcom.errorMsg, hxcom.getHextPath and hxcom.getSkeyParam.
void registerScriptFunctions(HextGlibScriptor& scriptor);
