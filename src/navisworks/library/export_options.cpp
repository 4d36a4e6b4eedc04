#include "navisworks/library/export_options.h"

#include "scripts/options.h"
#include "scripts/script_presence.h"

namespace nv {

// A script that loads is asked even for functions that it has not: each such call says so on the command line.
Options readOptions(bool isScriptLoaded) {
    Options read;
    read.expandPipeRuns = optionOn(options::nvExpandBranch);
    read.sortsManagers = optionOn(options::sortNode);
    read.gridsAsGeometry = optionOn(options::orAxiss);
    read.withWelds = optionOn(options::outWeld);
    read.keepsWeldText = optionOn(options::outWeldText);
    read.asksNames = isScriptLoaded || scriptHasFunction("getNodeName");
    read.asksProperties = isScriptLoaded || scriptHasFunction("getReference");
    return read;
}

}  // namespace nv
