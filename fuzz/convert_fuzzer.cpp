// convert_fuzzer.cpp - arbitrary bytes through kvxml convert, to either format.
//
// The bytes become the input file (XML text or Fast Infoset, plain or
// compressed, as its first bytes say); each conversion must end with output
// or with the converter's error, never a crash or hang. XML text goes
// through the parsing thread and its event blocks.
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <fstream>
#include <string>

#include "Convert.h"
#include "kvxml/output/Encoder.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const std::string path = "/tmp/kvxml-convert-fuzz-" + std::to_string(getpid());
    static const bool utf8 = (KvXmlLib10::ASCIIOnly(true), true);  // as the program runs
    static_cast<void>(utf8);
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    kvxml_cli::ConvertOptions options;
    options.in = path;
    options.out = "/dev/null";
    options.suggested = size % 2 == 0;
    for (const char* to : {"fi", "xml"}) {
        options.to = to;
        try {
            kvxml_cli::Convert(options);
        } catch (const std::exception&) {
        }
    }
    return 0;
}
