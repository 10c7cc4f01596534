// DeepEntityProbe.cpp - proves the installed expat expands a 100,000-deep entity
// chain on a 256 KiB stack. Older expat releases recurse once per level and
// crash; the entity limit hides that by default, so this probe lifts it and
// fails loudly, naming the cure, rather than letting a vulnerable expat pass.
#include <pthread.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/KvException.h"
#include "support/EntityChain.h"

using namespace KvXmlLib10;

namespace {

constexpr int kDepth = 100000;
constexpr std::size_t kStackSize = 256 * 1024;

void* ParseChain(void* text) {
    CXmlDocument::SetMaxEntityDeclarations(0);
    try {
        CXmlDocument document;
        document.LoadXml(static_cast<const std::string*>(text)->c_str());
        const CXmlElement* root = document.GetDocumentElement();
        return reinterpret_cast<void*>(static_cast<intptr_t>(root && root->GetText() == "x" ? 0 : 2));
    } catch (const CKvException& error) {
        std::fprintf(stderr, "the chain was refused: %s\n", error.GetMessage().c_str());
        return reinterpret_cast<void*>(3);
    }
}

// Runs the parse in this (child) process on a thread with a small stack.
int RunParse() {
    const std::string text = KvXmlTest::EntityChain(kDepth);
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    pthread_t thread;
    if (pthread_create(&thread, &attributes, ParseChain, const_cast<std::string*>(&text)) != 0) return 4;
    void* result = nullptr;
    pthread_join(thread, &result);
    return static_cast<int>(reinterpret_cast<intptr_t>(result));
}

}  // namespace

int main() {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0) return 5;
    if (child == 0) _exit(RunParse());
    int status = 0;
    if (waitpid(child, &status, 0) != child) return 5;
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        std::printf("expat expanded %d nested entities on a %zu KiB stack\n", kDepth, kStackSize / 1024);
        return 0;
    }
    if (WIFSIGNALED(status) || (WIFEXITED(status) && WEXITSTATUS(status) != 2 && WEXITSTATUS(status) != 3)) {
        std::fprintf(stderr,
                     "The installed expat crashed expanding %d nested entities on a %zu KiB stack: it recurses "
                     "once per entity level and a small hostile document can crash any program using it. "
                     "Update it: run scripts/setup.sh (or apt-get install libexpat1 libexpat1-dev).\n",
                     kDepth, kStackSize / 1024);
    } else {
        std::fprintf(stderr, "expat did not expand the entity chain to \"x\" (status %d)\n", WEXITSTATUS(status));
    }
    return 1;
}
