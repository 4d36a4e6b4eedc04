#include "hextinterface/manager/names/insulation.h"

#include "frame/exceptions.h"
#include "hextinterface/manager/register/cleaned_texts.h"
#include "platform/attribute_cache.h"
#include "platform/hxcom.h"
#include "platform/smrtln.h"

#include <algorithm>
#include <limits>

namespace {

// Cut to an integer; what fits none is the lowest one, as a conversion in hardware has it.
std::int32_t truncated(double value) {
    constexpr double limit = 2147483648.0;
    return value > -limit - 1 && value < limit ? static_cast<std::int32_t>(value)
                                               : std::numeric_limits<std::int32_t>::min();
}

std::int32_t temperatureOf(std::string_view text) {
    return text == "常温" ? 25 : truncated(numberOf(text));
}

struct Insulation {
    std::string code;
    std::string key;
};

std::int32_t thicknessOf(const HxDbObject* object, const std::string& size, const std::string& temperature) {
    double thickness = 0;
    std::string material;
    smrtln::getInsulation(HxDbSmrtlnEntity::cast(object), thickness, material);
    if (!(thickness > 0)) {
        hxcad::hextPrintf("\nerrId:%I64d size1:%s destemp:%s\n", static_cast<long long>(naming::idOf(object).toInt()),
                          size.c_str(), temperature.c_str());
        throw ExportException("保温元件保温厚度为0");
    }
    return truncated(thickness);
}

void widen(InsulationRecord& record, std::int32_t size, std::int32_t temperature) {
    record.minSize = std::min(record.minSize, size);
    record.maxSize = std::max(record.maxSize, size);
    record.minTemperature = std::min(record.minTemperature, temperature);
    record.maxTemperature = std::max(record.maxTemperature, temperature);
}

// Adds the object to the table, or widens its record.
Insulation enter(InsulationTable& table, const HxDbObject* object) {
    const std::string sizeText(getBomValue(object, "size1"));
    if (sizeText.find('*') != std::string::npos) {
        throw ExportException("不支持的尺寸类型");
    }
    const HxDbObject* pipeline = openByAttribute<HxDbObject>(object, "lineno");
    Insulation result;
    result.code = insulationCode(pipeline, object);
    const std::string temperatureText(getBomValue(pipeline, "destemp"));
    const std::int32_t thickness = thicknessOf(object, sizeText, temperatureText);
    const std::int32_t size = truncated(numberOf(sizeText));
    const std::int32_t temperature = temperatureOf(temperatureText);
    if (size < 1 || temperature <= -1000) {
        throw ExportException("保温信息错误");
    }
    result.key = result.code + "_" + std::to_string(thickness);
    const auto [at, isNew] = table.try_emplace(result.key);
    if (isNew) {
        at->second = {size, size, temperature, temperature, std::string(getBomValue(object, "material"))};
    }
    widen(at->second, size, temperature);
    return result;
}

}  // namespace

std::string insulationCode(const HxDbObject* pipeline, const HxDbObject* component) {
    std::string code(getBomValue(pipeline, "insulcode"));
    if (code.empty()) {
        modeling::get_tube_insulcode(HxDbTubeModel::cast(component), code);
    }
    if (code.empty()) {
        hxcad::hextPrintf("\nerrId:%I64d\n", static_cast<long long>(naming::idOf(component).toInt()));
        throw ExportException("保温代号为空");
    }
    return code;
}

void InsulationNames::registerInsulation(const HxDbObject* object) {
    enter(table_, object);
}

const InsulationTable& InsulationNames::getInsulTable() const {
    return table_;
}

const std::string& InsulationNames::getInsulScomName(const HxDbObject* object) {
    return names_.put("INS_" + enter(table_, object).key + "-SC", NameKind::InsulScom);
}

const std::string& InsulationNames::getInsulMtsetName(const HxDbObject* object) {
    return names_.put("INS_" + enter(table_, object).key + "-MT", NameKind::Mtset);
}

const std::string& InsulationNames::getInsulSpecName(std::string_view code) {
    return names_.put(code.empty() ? "_" : code, NameKind::InsulSpec);
}

const std::string& InsulationNames::getInsulShortName(const HxDbObject* object) {
    return names_.put(enter(table_, object).key + "-SP", NameKind::Short);
}

const std::string& InsulationNames::getInsulSpcoName(const HxDbObject* object) {
    const Insulation insulation = enter(table_, object);
    std::string name = getInsulSpecName(insulation.code);
    (name += '/') += names_.put(insulation.key + "-SP", NameKind::Short);
    return names_.put(name, NameKind::InsulSpco);
}
