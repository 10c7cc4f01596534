// Diagnostics.h - errors, warnings and notes of one kvxsd run, with their positions.
#pragma once

#include <string>
#include <vector>

#include "SchemaModel.h"

namespace kvxsd {

/// Thrown by Diagnostics::Error when the run stops at its first error.
struct StopRun {};

class Diagnostics {
public:
    Diagnostics(const std::vector<std::string>& files, bool keepGoing) : m_files(files), m_keepGoing(keepGoing) {}

    /// Records an error; without --keep-going the run stops here (throws StopRun).
    void Error(const SourcePos& pos, const std::string& message);
    void Warning(const SourcePos& pos, const std::string& message);
    void Note(const SourcePos& pos, const std::string& message);

    bool HasErrors() const { return m_errors != 0; }
    const std::vector<Diagnostic>& All() const { return m_list; }
    /// "file:line:col: error: message" per diagnostic, in the order they came.
    std::string Format() const;
    std::string Format(const Diagnostic& d) const;
    std::string Where(const SourcePos& pos) const;

private:
    const std::vector<std::string>& m_files;
    bool m_keepGoing;
    int m_errors = 0;
    std::vector<Diagnostic> m_list;
};

}  // namespace kvxsd
