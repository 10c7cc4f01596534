// Frontend.h - from command-line options to the resolved Model.
#pragma once

#include "Diagnostics.h"
#include "Options.h"
#include "SchemaLoader.h"
#include "SchemaModel.h"

namespace kvxsd {

/// Resolves the loaded schema set into model (names, ids, indexes). Problems go
/// to diags; the model is only usable when diags has no errors.
void ResolveModel(const SchemaSet& set, const Options& options, Model& model, Diagnostics& diags);

/// LoadSchemas + ResolveModel; returns false when an error was reported. The
/// diagnostics are appended to messages, one formatted line each.
bool BuildModel(const Options& options, Model& model, std::vector<std::string>& messages);

}  // namespace kvxsd
