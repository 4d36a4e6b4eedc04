// The four functions that the module exports. No exception leaves them.
#include "eem/command.h"
#include "frame/commands.h"
#include "frame/tessaro_app.h"
#include "hextinterface/hext_commands.h"
#include "max/command.h"
#include "navisworks/command.h"
#include "obm/command.h"
#include "platform/hxcom.h"
#include "rvm/command.h"
#include "tolmar/paths.h"
#include "tolmar/run_report.h"
#include "tolmar/text.h"
#include "xdb/export.h"

#include <cstdint>
#include <string>
#include <vector>

#define TESSARO_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using tolmar::RunOutcome;
using tolmar::runReport;

// Stands at the edge of every command: nothing that a handler lets through reaches the host.
template <void (*Handler)()>
void guarded() {
    try {
        Handler();
    } catch (const std::exception& failure) {
        runReport().ended(RunOutcome::Failed, failure.what());
    } catch (...) {
        runReport().ended(RunOutcome::Failed, "unknown exception");
    }
}

constexpr CommandRow commands[] = {
    {"ORNAOUT", guarded<ornaout>},
    {"OBMOUT", guarded<obmout>},
    {"NVOUT", guarded<nvout>},
    {"HEXTOUT", guarded<hextout>},
    {"ShowHextBranch", guarded<showHextBranch>},
    {"RVMOUT", guarded<rvmout>},
    {"MAXOUT", guarded<maxout>},
};

// One instance for as long as the module is loaded.
TessaroApp& tessaroApp() {
    static TessaroApp app(commands);
    return app;
}

}  // namespace

TESSARO_EXPORT int tlrxEntryPoint(unsigned message, void* packet) {
    try {
        return dispatchMessage(tessaroApp(), message, packet);
    } catch (...) {
        return TlRx::kRetError;
    }
}

TESSARO_EXPORT std::uint32_t tlrxGetApiVersion() {
    return tlrxApiVersion;
}

// Copies the current design file to a folder, over an existing one; without a folder nothing is copied. Reports
// nothing.
TESSARO_EXPORT void CopyDesignAndDwg(const char* targetFolder) {
    if (targetFolder == nullptr || *targetFolder == '\0') {
        return;
    }
    try {
        const std::string item = HextSystem::getCurrentDesignItem("CurSelDatabase", false);
        const std::string source = std::string(HextSystem::getCurrentProjPath()) + "\\" + item;
        tolmar::copyFile(source, std::string(targetFolder) + "\\" + item);
    } catch (...) {
        return;
    }
}

// Hands out the shape and data of the objects under the current manager: see xdb::exportXdb.
TESSARO_EXPORT bool XDBOUT(std::vector<std::string>& types, std::vector<std::uint64_t>& colors,
                           std::vector<std::vector<double>>& positions, std::vector<std::vector<int>>& indices,
                           std::vector<std::vector<double>>& normals, std::vector<std::vector<int>>& normalIndices,
                           std::vector<std::string>& data, int strict) {
    try {
        return xdb::exportXdb({types, colors, positions, indices, normals, normalIndices, data}, strict);
    } catch (const std::exception& failure) {
        runReport().ended(RunOutcome::Failed, failure.what());
    } catch (...) {
        runReport().ended(RunOutcome::Failed, "unknown exception");
    }
    return false;
}
