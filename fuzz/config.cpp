// The project configuration: every reader takes any bytes or throws a standard exception.
#include "hextinterface/manager/register/type_tables.h"
#include "scratch_file.h"
#include "scripts/project_config.h"
#include "tolmar/system.h"

#include <exception>

namespace {

template <typename Read>
void attempt(Read&& read) {
    try {
        read();
    } catch (const std::exception&) {
        // A refusal, which the callers show.
    }
}

void readAll() {
    attempt([] { configEqnoName(); });
    configEquipPostName();
    configSupportSpec();
    configBoltSpec();
    ConfigTexts::detailTexts().find("ELBOWRTEXT");
    ConfigTexts::boltTexts().find("BOLTRTEXT");
    attempt([] {
        naming::TypeMapping mapping;
        mapping.loadSkeys();
        mapping.loadGtypes();
        for (const char* item : {"ELBOW", "TEE", ""}) {
            const std::string skey = mapping.skeyOf({item, "90LR", "BW", "BW", "", ""});
            mapping.gtypeOf({skey, "", "", "", "", ""});
        }
    });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzz::Root root("temp/hext/config.json");
    tolmar::setInstallationRoot(root.path());
    root.put(fuzz::asText(data, size));
    readAll();
    return 0;
}
