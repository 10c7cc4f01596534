// main.cpp - kvxsd, the schema compiler: XML Schema in, generated binding classes out.
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

#include "EmitTypes.h"
#include "Emitter.h"
#include "Frontend.h"
#include "ModelDump.h"

namespace {

const char* const kUsage =
    "usage: kvxsd [options] SCHEMA.xsd...\n"
    "Writes <stem>.h and <stem>.cpp per schema: classes for the kvxml library.\n"
    "  -o DIR               output folder (default: .)\n"
    "  --namespace NAME     C++ namespace (default: from each schema's file name)\n"
    "  -I DIR               folder searched for xs:include / xs:import locations\n"
    "  --catalog FILE       lines 'NAMESPACE-OR-LOCATION PATH' mapping schemas to local files\n"
    "  --keep-going         report every error, not only the first\n"
    "  --explain-names      print every XML name that was given another C++ name\n"
    "  --rename PATH=Name   force one C++ name; PATH is a type name (Item), a global element\n"
    "                       (order), OWNER/element for a local anonymous type, CLASSPATH/child,\n"
    "                       CLASSPATH/@attribute, ENUM/value; --explain-names shows paths\n"
    "  --namespace-map URI=NAME  C++ namespace of the schemas with target namespace URI\n"
    "  --depfile FILE       write a Makefile rule: outputs depend on every schema read\n"
    "  --dump-model         print the resolved model instead of writing files\n"
    "  --help, --version\n"
    "Schema locations are never fetched from the network.\n";

// All files are written beside their targets and renamed at the end, so a
// failure leaves no partial output.
bool WriteAll(const std::string& dir, const std::vector<kvxsd::OutputFile>& files) {
    std::vector<std::string> temps;
    bool ok = true;
    for (const kvxsd::OutputFile& f : files) {
        const std::string temp = dir + "/." + f.name + ".kvxsd-" + std::to_string(getpid());
        std::ofstream out(temp, std::ios::binary);
        out << f.content;
        out.close();
        temps.push_back(temp);
        if (!out) {
            std::fprintf(stderr, "kvxsd: error: cannot write %s\n", temp.c_str());
            ok = false;
            break;
        }
    }
    for (size_t i = 0; ok && i < files.size(); ++i) {
        if (std::rename(temps[i].c_str(), (dir + "/" + files[i].name).c_str()) != 0) {
            std::fprintf(stderr, "kvxsd: error: cannot write %s/%s\n", dir.c_str(), files[i].name.c_str());
            ok = false;
        }
    }
    if (!ok)
        for (const std::string& temp : temps) std::remove(temp.c_str());
    return ok;
}

bool WriteDepfile(const kvxsd::Options& options, const kvxsd::Model& model,
                  const std::vector<kvxsd::OutputFile>& files) {
    namespace fs = std::filesystem;
    std::vector<std::string> outputs, inputs;
    for (const kvxsd::OutputFile& f : files)
        outputs.push_back((fs::absolute(options.outDir) / f.name).lexically_normal().string());
    for (const std::string& path : model.files) inputs.push_back(fs::absolute(path).lexically_normal().string());
    std::ofstream out(options.depfile, std::ios::binary);
    out << kvxsd::DepfileText(outputs, inputs);
    out.close();
    if (out) return true;
    std::fprintf(stderr, "kvxsd: error: cannot write %s\n", options.depfile.c_str());
    return false;
}

}  // namespace

int main(int argc, char** argv) {
    kvxsd::Options options;
    bool dump = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        auto value = [&](const char* name) -> std::string {
            if (i + 1 >= argc) {
                std::fprintf(stderr, "kvxsd: error: %s needs a value\n", name);
                std::exit(1);
            }
            return argv[++i];
        };
        if (arg == "--help" || arg == "-h") {
            std::fputs(kUsage, stdout);
            return 0;
        }
        if (arg == "--version") {
            std::printf("kvxsd %s\n", KVXML_VERSION);
            return 0;
        }
        if (arg == "-o") options.outDir = value("-o");
        else if (arg == "--namespace") options.cppNamespace = value("--namespace");
        else if (arg == "-I") options.includeDirs.push_back(value("-I"));
        else if (arg.size() > 2 && arg.compare(0, 2, "-I") == 0) options.includeDirs.push_back(arg.substr(2));
        else if (arg == "--catalog") options.catalog = value("--catalog");
        else if (arg == "--keep-going") options.keepGoing = true;
        else if (arg == "--depfile") options.depfile = value("--depfile");
        else if (arg == "--namespace-map") {
            const std::string mapping = value("--namespace-map");
            const size_t eq = mapping.rfind('=');
            if (eq == std::string::npos || eq + 1 == mapping.size()) {
                std::fprintf(stderr, "kvxsd: error: --namespace-map takes URI=NAME, not %s\n", mapping.c_str());
                return 1;
            }
            options.namespaceMap.emplace_back(mapping.substr(0, eq), mapping.substr(eq + 1));
        }
        else if (arg == "--explain-names") options.explainNames = true;
        else if (arg == "--dump-model") dump = true;
        else if (arg == "--rename") {
            const std::string mapping = value("--rename");
            const size_t eq = mapping.rfind('=');
            if (eq == std::string::npos || eq == 0 || eq + 1 == mapping.size()) {
                std::fprintf(stderr, "kvxsd: error: --rename takes PATH=Name, not %s\n", mapping.c_str());
                return 1;
            }
            options.renames.emplace_back(mapping.substr(0, eq), mapping.substr(eq + 1));
        } else if (!arg.empty() && arg[0] == '-') {
            std::fprintf(stderr, "kvxsd: error: unknown option %s\n%s", arg.c_str(), kUsage);
            return 1;
        } else {
            options.schemas.push_back(arg);
        }
    }
    if (options.schemas.empty()) {
        std::fputs(kUsage, stderr);
        return 1;
    }
    kvxsd::Model model;
    std::vector<std::string> messages;
    const bool ok = kvxsd::BuildModel(options, model, messages);
    for (const std::string& m : messages) std::fprintf(stderr, "%s\n", m.c_str());
    if (!ok) return 1;
    if (options.explainNames)
        for (const std::string& line : model.renames) std::printf("%s\n", line.c_str());
    if (dump) {
        std::fputs(kvxsd::DumpModel(model).c_str(), stdout);
        return 0;
    }
    try {
        const std::vector<kvxsd::OutputFile> files = kvxsd::EmitBindings(model, options);
        if (!WriteAll(options.outDir, files)) return 1;
        return options.depfile.empty() || WriteDepfile(options, model, files) ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "kvxsd: error: %s\n", e.what());
        return 1;
    }
}
