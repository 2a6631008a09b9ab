// Takes a picture of every window and dialog of the real updater, or of its splash alone.
#include <cstdio>
#include <exception>

#include "e2e/options.h"
#include "screenshots/gallery.h"

int main(int argc, char** argv) {
    try {
        const swiftpatch::e2e::Options options = swiftpatch::e2e::ReadOptions(argc, argv);
        swiftpatch::e2e::Gallery gallery(options);
        if (options.splash.empty()) {
            gallery.Make();
        } else {
            gallery.MakeSplash(options.splash);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "screenshots: failed: %s\n", error.what());
        return 1;
    }
    return 0;
}
