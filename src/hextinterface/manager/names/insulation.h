// The insulation that components carry, gathered as they come, and the names of its elements.
#pragma once

#include "hextinterface/manager/register/names.h"
#include "platform/objects.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

// Sizes in millimetres and temperatures in degrees, as far as components with this insulation have them.
struct InsulationRecord {
    std::int32_t minSize = 0;
    std::int32_t maxSize = 0;
    std::int32_t minTemperature = 0;
    std::int32_t maxTemperature = 0;
    std::string material;  // as first seen
};
// By key: insulation code, "_", whole millimetres of thickness.
using InsulationTable = std::map<std::string, InsulationRecord>;

// The insulation code of a pipeline, else of the component; either may be null. Prints the component's id and throws
// ExportException "保温代号为空" when neither has one.
std::string insulationCode(const HxDbObject* pipeline, const HxDbObject* component);

class InsulationNames {
public:
    explicit InsulationNames(NameRegister& names) : names_(names) {}

    // Every operation with an object adds it to the table or widens its record. ExportException "不支持的尺寸类型",
    // "保温代号为空", "保温元件保温厚度为0" or "保温信息错误" when the object does not tell its insulation.
    void registerInsulation(const HxDbObject* object);
    const InsulationTable& getInsulTable() const;
    const std::string& getInsulScomName(const HxDbObject* object);
    const std::string& getInsulMtsetName(const HxDbObject* object);
    // "_" for the empty code.
    const std::string& getInsulSpecName(std::string_view code);
    const std::string& getInsulShortName(const HxDbObject* object);
    const std::string& getInsulSpcoName(const HxDbObject* object);

private:
    NameRegister& names_;
    InsulationTable table_;
};
