#include "model/GlobalSettings.h"

namespace mova {

MOVASettings GlobalSettings;

}  // namespace mova
