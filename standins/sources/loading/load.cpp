#include "sources/json/model_reader.h"
#include "sources/json/text_file.h"
#include "sources/json/writer.h"
#include "sources/loading/folder.h"
#include "sources/pcf/format.h"
#include "sources/review/format.h"
#include "sources/source.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <new>

namespace plant {

namespace {

bool isModelFile(std::string_view start, const std::filesystem::path&) {
    const std::size_t first = start.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && start[first] == '{';
}

void readModelFile(SourceFile& file) {
    if (file.memory == nullptr) {
        refuse("a model file already; only files of other formats are converted");
    }
    ModelReader(*file.memory).read(file.bytes);
}

constexpr SourceFormat formats[] = {
    {"model file", isModelFile, readModelFile},
    {"review model", review::isReview, review::readReview},
    {"piping component file", pcf::isPcf, pcf::readPcf},
};
constexpr std::size_t formatCount = std::size(formats);

// A plant on its way: what its files share, and the files that wait for each other.
class Gathering {
public:
    Gathering(ModelBuilder& builder, MemoryBuilder* memory, std::vector<LoadRemark>& remarks)
        : plant_{builder, remarks}, memory_(memory) {}

    // Reads a file by the format that its first bytes tell; gives what finds places in it, also where it throws.
    void read(const std::filesystem::path& path, ByteSource& bytes, PlaceOfRecord& placeOf);
    // Lets those tell that waited.
    void tellGroups() {
        for (const std::unique_ptr<FileGroup>& group : groups_) {
            if (group != nullptr) {
                group->tell(plant_);
            }
        }
    }

private:
    SharedPlant plant_;
    MemoryBuilder* memory_;
    std::array<std::unique_ptr<FileGroup>, formatCount> groups_;
};

// A file whose first bytes were looked at; they come again.
class PeekedSource final : public ByteSource {
public:
    explicit PeekedSource(ByteSource& rest) : rest_(&rest), start_(startSize, '\0') {
        start_.resize(rest.read(start_.data(), start_.size()));
    }
    std::string_view start() const { return start_; }

    std::size_t read(char* to, std::size_t most) override {
        const std::size_t again = std::min(most, start_.size() - used_);
        std::memcpy(to, start_.data() + used_, again);
        used_ += again;
        return again + (start_.size() < startSize ? 0 : rest_->read(to + again, most - again));
    }
    std::string placeOf(std::uint64_t byte) const override { return rest_->placeOf(byte); }

private:
    ByteSource* rest_;
    std::string start_;
    std::size_t used_ = 0;
};

std::size_t formatOf(std::string_view start, const std::filesystem::path& path) {
    const auto format = std::find_if(std::begin(formats), std::end(formats),
                                     [&](const SourceFormat& one) { return one.recognises(start, path); });
    return format == std::end(formats) ? 0 : static_cast<std::size_t>(format - std::begin(formats));
}

void Gathering::read(const std::filesystem::path& path, ByteSource& bytes, PlaceOfRecord& placeOf) {
    PeekedSource peeked(bytes);
    const std::size_t format = formatOf(peeked.start(), path);
    SourceFile file{path, peeked, plant_, memory_, groups_[format]};
    try {
        formats[format].read(file);
    } catch (...) {
        placeOf = file.placeOf;
        throw;
    }
    placeOf = file.placeOf;
}

// The files of one plant, told into one model.
class Loading {
public:
    void add(const std::filesystem::path& path, ByteSource& bytes);
    LoadResult finish();
    // Why there is no model, for the file that was added last or the one that the record is of.
    std::string errorOf(const Refusal& refusal) const;
    void begin(const std::filesystem::path& path) {
        told_.push_back({path.string(), builder_.objectCount(), builder_.databaseCount(), placeInModelFile});
    }
    const std::string& current() const { return told_.back().name; }

private:
    struct Told {
        std::string name;
        std::size_t firstObject;
        std::size_t firstDatabase;
        PlaceOfRecord placeOf;

        std::size_t first(RecordNumber::Kind kind) const {
            return kind == RecordNumber::Kind::Object ? firstObject : firstDatabase;
        }
    };
    const Told& fileOf(RecordNumber record) const;

    LoadResult result_{.model = ModelPtr(new Model), .error = {}, .remarks = {}};
    MemoryBuilder builder_{*result_.model};
    Gathering gathering_{builder_, &builder_, result_.remarks};
    std::vector<Told> told_;
    bool isFinishing_ = false;
};

void Loading::add(const std::filesystem::path& path, ByteSource& bytes) {
    gathering_.read(path, bytes, told_.back().placeOf);
}

LoadResult Loading::finish() {
    // What is told now belongs to no file alone.
    begin("the plant");
    told_.back().placeOf = [](RecordNumber record) { return "record " + std::to_string(record.number); };
    gathering_.tellGroups();
    isFinishing_ = true;
    builder_.finish();
    return std::move(result_);
}

const Loading::Told& Loading::fileOf(RecordNumber record) const {
    const auto isBehind = [&](const Told& file) { return file.first(record.kind) > record.number; };
    return *(std::find_if(told_.begin(), told_.end(), isBehind) - 1);
}

std::string Loading::errorOf(const Refusal& refusal) const {
    const Told& blamed = refusal.record() ? fileOf(*refusal.record()) : isFinishing_ ? told_.front() : told_.back();
    const std::string text = refusal.text([&](RecordNumber record) {
        const Told& file = fileOf(record);
        const std::string place = file.placeOf({record.kind, record.number - file.first(record.kind)});
        return &file == &blamed ? place : place + " of " + file.name;
    });
    return blamed.name + ": " + text;
}

LoadResult failure(std::string error) {
    return {.model = nullptr, .error = std::move(error), .remarks = {}};
}

using Tell = std::function<void(Loading&)>;

LoadResult load(const Tell& tell) {
    Loading loading;
    try {
        tell(loading);
        return loading.finish();
    } catch (const Refusal& refusal) {
        return failure(loading.errorOf(refusal));
    } catch (const std::bad_alloc&) {
        return failure(loading.current() + ": not enough memory");
    }
}

}  // namespace

std::string textOf(const LoadRemark& remark) {
    constexpr std::string_view grades[] = {"note", "loss", "fault"};
    std::string text(grades[static_cast<std::size_t>(remark.grade)]);
    return text.append(" ").append(remark.code).append(": ").append(remark.place).append(": ").append(remark.text);
}

std::span<const SourceFormat> sourceFormats() {
    return formats;
}

LoadResult loadPlant(std::span<const std::filesystem::path> files) {
    return load([&](Loading& loading) {
        for (const std::filesystem::path& file : filesOfPlant(files)) {
            loading.begin(file);
            loading.add(file, *openSource(file));
        }
    });
}

LoadResult loadModel(const std::filesystem::path& file) {
    return loadPlant({&file, 1});
}

LoadResult loadModelText(std::string_view json, std::string_view name) {
    return load([&](Loading& loading) {
        loading.begin(name);
        loading.add(name, *sourceOf(json));
    });
}

namespace {

// Tells files to a writer of a model file, one behind the other.
class Converting {
public:
    Converting(std::span<const std::filesystem::path> files, ConvertResult& result)
        : files_(filesOfPlant(files)), result_(result) {}

    // Throws a Refusal; `current` is the file that it is of.
    void run(JsonModelWriter& writer) {
        Gathering gathering(writer, nullptr, result_.remarks);
        for (const std::filesystem::path& path : files_) {
            current_ = path.string();
            PlaceOfRecord placeOf;
            gathering.read(path, *openSource(path), placeOf);
        }
        gathering.tellGroups();
        writer.finish();
    }
    const std::string& current() const { return current_; }

private:
    std::vector<std::filesystem::path> files_;
    ConvertResult& result_;
    std::string current_;
};

}  // namespace

ConvertResult convertPlant(std::span<const std::filesystem::path> files, const std::filesystem::path& target) {
    ConvertResult result;
    Converting converting(files, result);
    writeTextFile(
        target,
        [&](const TextSink& sink) {
            try {
                JsonModelWriter writer(sink);
                converting.run(writer);
            } catch (const Refusal& refusal) {
                result.error = converting.current() + ": " + refusal.text();
                result.isRefused = true;
            }
            return !result.isRefused;
        },
        result.error);
    return result;
}

}  // namespace plant
