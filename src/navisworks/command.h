// The command NVOUT: the selected part of the model as a scene, and a JSON file with the properties beside it.
#pragma once

void nvout();
