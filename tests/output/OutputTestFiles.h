// OutputTestFiles.h - unique temporary files for the file-stream tests.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace kvxml_test {

/// A fresh path under the test temp dir; the file is removed on destruction.
class TempFile {
public:
    TempFile() {
        static std::atomic<int> counter{0};
        const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path = ::testing::TempDir() + "kvxml_" + std::to_string(::getpid()) + "_" +
                 (info ? info->name() : "test") + "_" + std::to_string(counter++) + ".xml";
        std::remove(m_path.c_str());
    }
    ~TempFile() { std::remove(m_path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }
    /// The whole file, or an empty vector when it does not exist.
    std::vector<unsigned char> Read() const {
        std::ifstream in(m_path, std::ios::binary);
        return std::vector<unsigned char>((std::istreambuf_iterator<char>(in)),
                                          std::istreambuf_iterator<char>());
    }
    bool Exists() const { return std::ifstream(m_path).good(); }

private:
    std::string m_path;
};

}  // namespace kvxml_test
