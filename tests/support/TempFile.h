// TempFile.h - a file under the test temp dir, removed when the test is done with it.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace KvXmlTest {

class TempFile {
public:
    /// A fresh path that does not exist yet.
    TempFile() {
        static std::atomic<int> counter{0};
        const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path = ::testing::TempDir() + "kvxml_" + std::to_string(::getpid()) + "_" +
                 (info ? info->name() : "test") + "_" + std::to_string(counter++) + ".xml";
        std::remove(m_path.c_str());
    }
    /// A file holding `contents`.
    explicit TempFile(const std::string& contents) : TempFile() {
        if (std::FILE* file = std::fopen(m_path.c_str(), "wb")) {
            std::fwrite(contents.data(), 1, contents.size(), file);
            std::fclose(file);
        }
    }
    ~TempFile() { std::remove(m_path.c_str()); }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const char* Path() const { return m_path.c_str(); }
    /// The whole file, or nothing when it does not exist.
    std::vector<unsigned char> Read() const {
        std::ifstream in(m_path, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    bool Exists() const { return std::ifstream(m_path).good(); }

private:
    std::string m_path;
};

}  // namespace KvXmlTest
