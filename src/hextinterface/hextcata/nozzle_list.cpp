#include "hextinterface/hextcata/nozzle_list.h"

std::vector<HxDbNozzleModel*>& nozzlesWithSpec() {
    static std::vector<HxDbNozzleModel*> nozzles;
    return nozzles;
}
