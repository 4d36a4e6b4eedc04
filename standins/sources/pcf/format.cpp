#include "sources/pcf/format.h"

#include "sources/contents.h"
#include "sources/pcf/source.h"
#include "sources/remarks.h"
#include "sources/standards/settings.h"
#include "sources/world.h"
#include "tolmar/file.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"

namespace plant::pcf {

namespace {

constexpr const char* settingsName = "sys/sources.json";

standards::Settings installedSettings() {
    standards::Settings settings;
    const std::string path = tolmar::installedPath(settingsName);
    std::string text;
    std::error_code error;
    if (!std::filesystem::exists(tolmar::resolvePath(path), error)) {
        return settings;
    }
    std::string fault = "cannot be read";
    if (!tolmar::readFile(path, text) || !settings.take(text, fault)) {
        refuse(path + ": " + fault);
    }
    return settings;
}

class Lines final : public FileGroup {
public:
    explicit Lines(std::string name) : name_(std::move(name)) {}
    void read(SourceFile& file) { source_.read(file.path.string(), Contents(file).bytes()); }
    void tell(SharedPlant& plant) override {
        tellWorld(name_, name_, plant.builder, plant.world);
        source_.tell(plant.world, plant.builder);
        addRemarks(report_, name_, plant.remarks);
    }

private:
    std::string name_;  // of the project where nothing else gives it one
    standards::Settings settings_ = installedSettings();
    SourceReport report_;
    Source source_{settings_, report_};
};

}  // namespace

bool isPcf(std::string_view start, const std::filesystem::path&) {
    return recognises(start);
}

void readPcf(SourceFile& file) {
    if (file.group == nullptr) {
        file.group = std::make_unique<Lines>(file.path.stem().string());
    }
    static_cast<Lines&>(*file.group).read(file);
}

}  // namespace plant::pcf
