// kvxsd_schema_fuzzer.cpp - arbitrary bytes compiled as a schema by kvxsd's front end.
//
// The bytes become a schema file (includes resolve beside it); loading and
// resolution must end with a model or with diagnostics, never a crash or hang.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "Frontend.h"
#include "ModelDump.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string path = "/tmp/kvxsd-fuzz-" + std::to_string(getpid()) + ".xsd";
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    kvxsd::Options options;
    options.keepGoing = size % 2 == 0;
    options.schemas.push_back(path);
    kvxsd::Model model;
    std::vector<std::string> messages;
    if (kvxsd::BuildModel(options, model, messages)) static_cast<void>(kvxsd::DumpModel(model));
    return 0;
}
