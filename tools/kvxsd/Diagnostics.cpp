// Diagnostics.cpp - collecting and printing kvxsd's messages.
#include "Diagnostics.h"

namespace kvxsd {

std::string Diagnostics::Where(const SourcePos& pos) const {
    if (pos.file < 0 || static_cast<size_t>(pos.file) >= m_files.size()) return "kvxsd";
    std::string where = m_files[pos.file];
    if (pos.line != 0) where += ':' + std::to_string(pos.line) + ':' + std::to_string(pos.column);
    return where;
}

std::string Diagnostics::Format(const Diagnostic& d) const {
    static const char* const kLevels[] = {"note", "warning", "error"};
    return Where(d.pos) + ": " + kLevels[static_cast<int>(d.level)] + ": " + d.message;
}

std::string Diagnostics::Format() const {
    std::string out;
    for (const Diagnostic& d : m_list) out += Format(d) + '\n';
    return out;
}

void Diagnostics::Error(const SourcePos& pos, const std::string& message) {
    m_list.push_back({Diagnostic::Level::Error, pos, message});
    ++m_errors;
    if (!m_keepGoing) throw StopRun{};
}

void Diagnostics::Warning(const SourcePos& pos, const std::string& message) {
    m_list.push_back({Diagnostic::Level::Warning, pos, message});
}

void Diagnostics::Note(const SourcePos& pos, const std::string& message) {
    m_list.push_back({Diagnostic::Level::Note, pos, message});
}

std::string FormatPos(const Model& model, const SourcePos& pos) {
    std::vector<std::string> files = model.files;
    return Diagnostics(files, true).Where(pos);
}

}  // namespace kvxsd
