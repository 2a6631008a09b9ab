// Shows one whole update by the real updater, and fails unless all of it went right.
#include <cstdio>
#include <exception>

#include "demo/demo_run.h"
#include "e2e/options.h"

int main(int argc, char** argv) {
    try {
        const swiftpatch::e2e::Options options = swiftpatch::e2e::ReadOptions(argc, argv);
        swiftpatch::e2e::DemoRun run(options);
        run.Run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "demo: failed: %s\n", error.what());
        return 1;
    }
    std::puts("demo: the update went right");
    return 0;
}
