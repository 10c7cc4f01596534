// main.cpp - kvxml: convert between XML text and Fast Infoset, and describe documents.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "Convert.h"
#include "kvxml/output/Encoder.h"

using namespace KvXmlLib10;
using namespace kvxml_cli;

namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

const char kUsage[] =
    "Usage: kvxml convert [options] IN OUT\n"
    "       kvxml info FILE\n"
    "\n"
    "convert  Converts between XML text and Fast Infoset (ITU-T X.891) in either\n"
    "         direction. The input's format and compression are taken from its\n"
    "         bytes; the output's format from --to, else from OUT's extension\n"
    "         (.fi, .finf, .fis: Fast Infoset; .xml: XML text), else the other\n"
    "         format. '-' is standard input or output.\n"
    "  --to xml|fi   output format\n"
    "  --gzip        gzip-compress the output\n"
    "  --zlib        zlib-compress the output\n"
    "  --pretty      indent XML output (whitespace-only text is dropped)\n"
    "  --suggested   write numbers, booleans, dates and times in binary form\n"
    "  --max-add-length N  index Fast Infoset values shorter than N characters\n"
    "                (default 6)\n"
    "info     Prints format, compression, size, element and attribute counts and\n"
    "         the sizes of the Fast Infoset vocabulary tables of the document.\n"
    "  -h, --help    this text\n"
    "  --version     the version\n"
    "\n"
    "Exit status: 0 success, 1 the conversion failed, 2 usage error.\n";

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

int Run(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) throw UsageError("missing command");
    const std::string command = args[0];
    if (command == "-h" || command == "--help" || command == "help") {
        std::fputs(kUsage, stdout);
        return kExitOk;
    }
    if (command == "--version") {
        std::printf("kvxml %s\n", KVXML_VERSION);
        return kExitOk;
    }
    std::vector<std::string> operands;
    ConvertOptions options;
    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& arg = args[i];
        if (arg == "-h" || arg == "--help") {
            std::fputs(kUsage, stdout);
            return kExitOk;
        } else if (arg == "--to" && command == "convert") {
            if (++i == args.size()) throw UsageError("--to needs xml or fi");
            options.to = args[i];
            if (options.to != "xml" && options.to != "fi") throw UsageError("--to needs xml or fi, not " + options.to);
        } else if (arg == "--max-add-length" && command == "convert") {
            if (++i == args.size()) throw UsageError("--max-add-length needs a number");
            char* end = nullptr;
            const unsigned long value = std::strtoul(args[i].c_str(), &end, 10);
            if (*end || value == 0 || value > (1u << 20)) throw UsageError("--max-add-length needs 1 to 1048576");
            options.maxAddLength = static_cast<uint32_t>(value);
        } else if (arg == "--gzip" && command == "convert") {
            options.compression = Compression::Gzip;
        } else if (arg == "--zlib" && command == "convert") {
            options.compression = Compression::Zlib;
        } else if (arg == "--pretty" && command == "convert") {
            options.pretty = true;
        } else if (arg == "--suggested" && command == "convert") {
            options.suggested = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            throw UsageError("unknown option " + arg);
        } else {
            operands.push_back(arg);
        }
    }
    if (command == "convert") {
        if (operands.size() != 2) throw UsageError("convert needs IN and OUT");
        options.in = operands[0];
        options.out = operands[1];
        Convert(options);
        return kExitOk;
    }
    if (command == "info") {
        if (operands.size() != 1) throw UsageError("info needs one FILE");
        Info(operands[0], stdout);
        return kExitOk;
    }
    throw UsageError("unknown command " + command);
}

}  // namespace

int main(int argc, char** argv) {
    // Text stays UTF-8 from input to output, whatever the locale.
    ASCIIOnly(true);
    try {
        return Run(argc, argv);
    } catch (const UsageError& error) {
        std::fprintf(stderr, "kvxml: %s\nTry 'kvxml --help'.\n", error.what());
        return kExitUsage;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "kvxml: %s\n", error.what());
        return kExitFailed;
    }
}
