// What every macro writer is handed: the names and the user attributes of the run. Neither is owned.
#pragma once

class NameManager;
class UdaWriter;

struct ExportContext {
    NameManager& names;
    UdaWriter& udas;
};
