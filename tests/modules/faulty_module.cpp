// A module with one fault, chosen by a definition.
#include "tolmar/module_api.h"

#include <stdexcept>

#ifndef FAULT_NO_ENTRY
extern "C" int tlrxEntryPoint(unsigned message, void*) {
    if (message == TlRx::kInitAppMsg) {
        TlEdCommandStack::cast(tlrxSysRegistry()->at(TLAD_REGISTERED_COMMANDS))
            ->addCommand("FAULTY", "FAULTY", "FAULTY", 0, [] {});
    }
#ifdef FAULT_INIT_FAILS
    return TlRx::kRetError;
#elif defined(FAULT_INIT_THROWS)
    throw std::runtime_error("no licence");
#else
    return TlRx::kRetOK;
#endif
}
#endif

#ifdef FAULT_WRONG_VERSION
extern "C" unsigned tlrxGetApiVersion() {
    return tlrxApiVersion - 1;
}
#elif !defined(FAULT_NO_VERSION)
extern "C" unsigned tlrxGetApiVersion() {
    return tlrxApiVersion;
}
#endif
