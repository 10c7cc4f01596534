// Emitter.h - the interface between kvxsd's front end and its C++ writer.
#pragma once

#include <string>
#include <vector>

#include "Options.h"
#include "SchemaModel.h"

namespace kvxsd {

/// One file to write into Options::outDir; the caller writes every file only
/// when the whole run succeeded (temp file, then rename), so an error never
/// leaves partial output behind.
struct OutputFile {
    std::string name;  ///< file name relative to the output folder ("po.h")
    std::string content;
};

/// Writes the <stem>.h / <stem>.cpp pair of every main schema of model.
/// Throws std::runtime_error on failure.
std::vector<OutputFile> EmitBindings(const Model& model, const Options& options);

}  // namespace kvxsd
