// ModelDump.h - a stable text form of the Model, for --dump-model and tests.
#pragma once

#include <string>

#include "SchemaModel.h"

namespace kvxsd {

/// One line per class, member, attribute, enumeration and global element.
std::string DumpModel(const Model& model);

}  // namespace kvxsd
