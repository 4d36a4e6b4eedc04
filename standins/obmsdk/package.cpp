#include "obmsdk/obm_package.h"

#include "gltf/json_text.h"
#include "obmsdk/working_file.h"
#include "tolmar/code_page.h"
#include "tolmar/paths.h"
#include "tolmar/system.h"

#include <cstdlib>
#include <filesystem>
#include <zip.h>

namespace {

namespace fs = std::filesystem;

// Every entry is dated 1980-01-01 00:00:00, the first moment that an archive knows.
constexpr std::uint16_t entryTime = 0;
constexpr std::uint16_t entryDate = (1U << 5U) | 1U;
constexpr std::uint32_t entryMode = 0100644U << 16U;
constexpr const char* indexName = "package.json";

struct DestroyPackage {
    void operator()(OBM3dPackage* package) const { package->destroy(); }
};
struct DiscardArchive {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};

}  // namespace

struct OBMPackage::State {
    ~State() { removeFolder(); }

    void removeFolder() {
        std::error_code ignored;
        if (!folder.empty()) {
            fs::remove_all(folder, ignored);
        }
        folder.clear();
    }
    bool makeFolder();
    bool writeIndex() const;
    bool addFile(zip_t* archive, const fs::path& file) const;
    bool writeArchive() const;

    fs::path target;
    fs::path folder;
    bool isOpen = false;
    std::string project;
    std::string program;
    std::vector<std::unique_ptr<OBM3dPackage, DestroyPackage>> packages;
};

// Beside the target, so that both are on one disk; the name of each run is its own.
bool OBMPackage::State::makeFolder() {
    std::error_code error;
    const fs::path full = fs::absolute(target, error);
    if (error || fs::is_directory(full, error)) {
        return false;
    }
    std::string name = (full.parent_path() / ("." + full.filename().string() + ".XXXXXX")).string();
    if (tolmar::dryRun()) {
        folder = name;
        return true;
    }
    if (::mkdtemp(name.data()) == nullptr) {
        return false;
    }
    folder = name;
    return fs::create_directory(folder / "output", error);
}

// package.json: names, and the index file of each 3D package.
bool OBMPackage::State::writeIndex() const {
    std::string text;
    gltf::JsonText json(text);
    json.beginObject().key("format").string("pmodel").key("version").number(1);
    json.newLine().key("projectName").string(project).key("sourceProgram").string(program);
    json.newLine().key("models").beginArray();
    for (const auto& package : packages) {
        json.string(fs::path(package->files().front()).lexically_relative(folder).generic_string());
    }
    json.endArray().endObject();
    obm::WorkingFile file;
    file.open(folder / indexName);
    file.write(text + "\n");
    return file.close();
}

// Entries are stored as they are: packing takes many times as long as writing, and its bytes depend on the library's
// version.
bool OBMPackage::State::addFile(zip_t* archive, const fs::path& file) const {
    zip_source_t* source = zip_source_file(archive, file.c_str(), 0, -1);
    const std::string name = file.lexically_relative(folder).generic_string();
    const zip_int64_t entry = source != nullptr ? zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (entry < 0) {
        zip_source_free(source);
        return false;
    }
    const auto index = static_cast<zip_uint64_t>(entry);
    return zip_set_file_compression(archive, index, ZIP_CM_STORE, 0) == 0 &&
           zip_file_set_dostime(archive, index, entryTime, entryDate, 0) == 0 &&
           zip_file_set_external_attributes(archive, index, 0, ZIP_OPSYS_UNIX, entryMode) == 0;
}

// The library writes beside the target and renames at the end: no half file ever bears the name.
bool OBMPackage::State::writeArchive() const {
    int error = 0;
    std::unique_ptr<zip_t, DiscardArchive> archive(zip_open(target.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error));
    if (archive == nullptr || !addFile(archive.get(), folder / indexName)) {
        return false;
    }
    for (const auto& package : packages) {
        for (const std::string& file : package->files()) {
            if (!addFile(archive.get(), file)) {
                return false;
            }
        }
    }
    if (zip_close(archive.get()) != 0) {
        return false;
    }
    static_cast<void>(archive.release());
    return true;
}

OBMPackage::OBMPackage() : state_(std::make_unique<State>()) {}
OBMPackage::~OBMPackage() = default;

OBMPackage* OBMPackage::create(bool) {
    return new OBMPackage;
}

void OBMPackage::destroy() {
    delete this;
}

int OBMPackage::open(obm::WideView path, OBMXOPENMODE mode) {
    if (mode != OBMXCREATE) {
        return OBMBadMode;
    }
    state_->target = tolmar::resolvePath(tolmar::fromWide(path));
    state_->isOpen = state_->makeFolder();
    return state_->isOpen ? OBMOk : OBMNoFolder;
}

void OBMPackage::setProjectName(obm::WideView name) {
    state_->project = tolmar::wideToUtf8(name);
}

void OBMPackage::setSourceProgram(obm::WideView name) {
    state_->program = tolmar::wideToUtf8(name);
}

obm::WideText OBMPackage::getIntermediateFolder() const {
    return tolmar::utf8ToWide(state_->folder.string());
}

int OBMPackage::addV3d(OBM3dPackage* package3d) {
    std::unique_ptr<OBM3dPackage, DestroyPackage> owned(package3d);
    if (!state_->isOpen || owned->files().empty()) {
        return OBMNotOpen;
    }
    state_->packages.push_back(std::move(owned));
    return OBMOk;
}

int OBMPackage::save() {
    if (!state_->isOpen) {
        return OBMNotOpen;
    }
    if (tolmar::dryRun()) {
        return OBMOk;
    }
    return state_->writeIndex() && state_->writeArchive() ? OBMOk : OBMNotWritten;
}

int OBMPackage::close() {
    const bool wasOpen = state_->isOpen;
    state_->isOpen = false;
    state_->packages.clear();
    state_->removeFolder();
    return wasOpen ? OBMOk : OBMNotOpen;
}
