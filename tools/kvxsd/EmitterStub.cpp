// EmitterStub.cpp - placeholder until the C++ writer lands: emits nothing.
#include "Emitter.h"

namespace kvxsd {

std::vector<OutputFile> EmitBindings(const Model&, const Options&) { return {}; }

}  // namespace kvxsd
