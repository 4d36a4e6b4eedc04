#include "hextinterface/hextcata/item.h"

#include "hextinterface/hextbasemethod/object_tests.h"
#include "hextinterface/manager/name_manager.h"
#include "platform/attribute_cache.h"
#include "platform/model_tests.h"
#include "platform/smrtln.h"
#include "scripts/project_config.h"
#include "tolmar/text.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int balloonSize = 20;
constexpr int outDiaNumber = 1;
constexpr int outDiaModule = 48;

std::string value(const HxDbObject* object, std::string_view key) {
    return std::string(getBomValue(object, key));
}

int sizeAt(const HxDbTubeModel* model, int number) {
    const char* size = smrtln::getSize(model, number);
    return size != nullptr ? cutToInteger(numberOf(size)) : 0;
}

// A nozzle's first end is the second of its specification.
std::string nozzleEnd(const HxDbNozzleModel* nozzle) {
    const HxDbTubeSpecification* specification = nozzle->getSpec();
    return specification != nullptr ? tolmar::textOrEmpty(specification->getEndtype(2)) : "";
}

// The end type of what a weld joins at a connection; unchanged without a neighbour.
void takeNeighbourEnd(const HxDbSmrtlnEntity* weld, int number, std::string& end) {
    const HxDbSmrtlnEntity* neighbour = weld->getConnSmrtln(number, 0);
    if (neighbour == nullptr) {
        return;
    }
    const int there = neighbour->getConnNoOfSmrtln(weld, 0);
    end = tolmar::textOrEmpty(smrtln::getEndType(HxDbTubeModel::cast(neighbour), there));
}

void readEnds(CataItem& item, const HxDbSmrtlnEntity* object, const NameManager& names) {
    constexpr std::string_view keys[] = {"end1", "end2", "end3", "end4"};
    for (std::size_t i = 0; i < item.ends.size(); ++i) {
        item.ends[i] = names.joints.keepName(getBomValue(object, keys[i]));
    }
    if (const HxDbNozzleModel* nozzle = HxDbNozzleModel::cast(object)) {
        item.ends[0] = nozzleEnd(nozzle);
    }
    if (isWeld(object)) {
        takeNeighbourEnd(object, 1, item.ends[0]);
        takeNeighbourEnd(object, 2, item.ends[1]);
    }
    for (std::size_t i = 1; i < item.ends.size(); ++i) {
        if (item.ends[i].empty()) {
            item.ends[i] = item.ends[i - 1];
        }
    }
}

std::string upperCase(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return text;
}

void fillTexts(CataItem& item, const ConfigTexts& texts) {
    if (texts.empty()) {
        return;
    }
    const std::string prefix = upperCase(item.item);
    const auto find = [&](const char* key) {
        const std::string_view own = texts.find(prefix + key);
        return own.empty() ? texts.find(key) : own;
    };
    item.rtext = find("RTEXT");
    item.stext = find("STEXT");
    item.ttext = find("TTEXT");
    if (const std::string_view description = find("DESC"); !description.empty()) {
        item.description = description;
    }
}

}  // namespace

int cutToInteger(double value) {
    using Limits = std::numeric_limits<int>;
    return std::isnan(value) ? 0 : static_cast<int>(std::clamp<double>(value, Limits::min(), Limits::max()));
}

void readSizes(const HxDbSmrtlnEntity* object, Bores& sizes) {
    const HxDbObject* source = object;
    if (isWeld(object)) {
        std::vector<HxDbObject*> connected;
        object->getAllConnObject(connected);
        source = connected.empty() ? object : connected.front();
    }
    if (source->isKindOf(HxDbBalloon::desc())) {
        sizes = {balloonSize, 0, 0, 0};
        return;
    }
    if (!source->isKindOf(HxDbSmrtlnEntity::desc())) {
        return;
    }
    const HxDbTubeModel* model = HxDbTubeModel::cast(source);
    for (int i = 0; i < 4; ++i) {
        sizes[static_cast<std::size_t>(i)] = sizeAt(model, i + 1);
    }
}

int sizeOfEnd(const Bores& s, int no) {
    switch (no) {
    case 0:
    case 1:
        return s[0];
    case 2:
        return s[1] != 0 ? s[1] : s[0];
    case 3:
        return s[2] != 0 ? s[2] : s[1] != 0 ? s[1] : s[0];
    case 4:
        return s[3] != 0 ? s[3] : s[2] != 0 ? s[2] : s[0];
    default:
        return 0;
    }
}

double outerDiameterOf(const HxDbSmrtlnEntity* object) {
    const HxDbTubeModelSpec* model = HxDbTubeModelSpec::cast(object);
    double outer = 0;
    double inner = 0;
    int section = 0;
    const bool known = model != nullptr && smrtln::getOutDia(model->getStandard(), model->getSpec(), outer, inner,
                                                             section, outDiaNumber, outDiaModule);
    return known ? outer : 0;
}

void fillItem(CataItem& item, const HxDbSmrtlnEntity* object, const NameManager& names, const ConfigTexts& texts) {
    item.object = object;
    item.item = value(object, "item");
    if (smrtln::isGaskVirtual(object)) {
        item.virtualGasket = true;
        item.hasGeometry = false;
    } else if (smrtln::isPipe(object) && !isFlangedPipe(object) && !smrtln::isBend(object)) {
        item.hasGeometry = false;
    }
    item.schedule = value(object, "sch");
    item.thickness = value(object, "thick");
    item.standard = value(object, "stan");
    item.material = value(object, "material");
    item.smrtlnType = object->isKindOf(HxDbBalloon::desc()) ? "Balloon" : value(object, "smrtln");
    item.description = item.item + " " + item.schedule + item.thickness;
    readEnds(item, object, names);
    Bores sizes{};
    readSizes(object, sizes);
    for (int i = 0; i < 4; ++i) {
        item.sizes[static_cast<std::size_t>(i)] = sizeOfEnd(sizes, i + 1);
    }
    fillTexts(item, texts);
}
