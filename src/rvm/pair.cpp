#include "rvm/pair.h"

#include "platform/hxcom.h"
#include "platform/left_out.h"
#include "scripts/node_name.h"
#include "tolmar/code_page.h"
#include "tolmar/text.h"

namespace rvm {

namespace {

std::string projectName() {
    return tolmar::textOrEmpty(HextSystem::getCurrentProjName());
}

std::string databaseName() {
    const HxDbDataBase* database = hxcom::getMainDataBase(true);
    return database != nullptr ? tolmar::textOrEmpty(database->dbName()) : "";
}

// A file that was never open has failed without a word from its close.
bool closeFile(tolmar::OutputFile& file) {
    return file.close() && !file.failed();
}

}  // namespace

RvmPair::RvmPair(const std::string& basePath, const Options& wanted)
    : RvmPair(tolmar::OutputFile(basePath + ".rvm", tolmar::FileMode::Binary),
              tolmar::OutputFile(basePath + ".txt", tolmar::FileMode::Text), wanted) {}

RvmPair::RvmPair(tolmar::OutputFile rvmFile, tolmar::OutputFile textFile, const Options& wanted)
    : rvmFile_(std::move(rvmFile)), textFile_(std::move(textFile)), options_(wanted), rvm_(rvmFile_),
      text_(textFile_, wanted.compat, wanted.asksAttributes), primitives_(rvm_, wanted.compat) {}

void RvmPair::writeHeader() {
    const bool utf8 = options_.compat;
    rvm_.writeHeader(utf8 ? tolmar::toUtf8(projectName()) : projectName(),
                     utf8 ? tolmar::toUtf8(databaseName()) : databaseName());
}

void RvmPair::writeAttributeHeader() {
    text_.writeAttributeHeader(projectName(), databaseName());
}

std::string RvmPair::nameOf(const HxDbObject* object, bool isPipelineObject) const {
    std::string name = options_.asksNames ? nodeName(object, isPipelineObject) : namelessName;
    if (!hasLineBreak(name)) {
        return name;
    }
    if (options_.compat) {
        return flattened(name);
    }
    reportLeftOut({object, name, "name"}, "a line break splits its line in the attribute file");
    return name;
}

bool RvmPair::close() {
    rvm_.flush();
    const bool isRvmWhole = closeFile(rvmFile_);
    return closeFile(textFile_) && isRvmWhole;
}

}  // namespace rvm
