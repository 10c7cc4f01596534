// FileOutput.cpp - writing a file beside its target and renaming it into place.
#include "output/detail/FileOutput.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace KvXmlLib10 {
namespace detail {

namespace {

// The process umask, read without changing it (umask(2) would, briefly,
// for every thread).
mode_t CurrentUmask() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.compare(0, 6, "Umask:") == 0) return static_cast<mode_t>(std::strtoul(line.c_str() + 6, nullptr, 8));
    }
    return 022;
}

}  // namespace

bool ReplacingFile::Open() {
    Discard();
    struct stat info {};
    const bool exists = ::lstat(m_target.c_str(), &info) == 0;
    if (m_target.empty() || (exists && !S_ISREG(info.st_mode))) {
        m_file.reset(std::fopen(m_target.c_str(), "wt"));
        return m_file != nullptr;
    }
    std::string name = m_target + ".kvxml-XXXXXX";
    const int descriptor = ::mkstemp(name.data());
    if (descriptor < 0) return false;
    m_temporary = name;
    ::fchmod(descriptor, 0666 & ~CurrentUmask());
    m_file.reset(::fdopen(descriptor, "w"));
    if (!m_file) {
        ::close(descriptor);
        Discard();
        return false;
    }
    return true;
}

bool ReplacingFile::Commit() {
    if (!m_file) return false;
    const bool closed = std::fclose(m_file.release()) == 0;
    if (m_temporary.empty()) return closed;
    if (closed && std::rename(m_temporary.c_str(), m_target.c_str()) == 0) {
        m_temporary.clear();
        return true;
    }
    Discard();
    return false;
}

void ReplacingFile::Discard() {
    m_file.reset();
    if (!m_temporary.empty()) {
        std::remove(m_temporary.c_str());
        m_temporary.clear();
    }
}

}  // namespace detail
}  // namespace KvXmlLib10
