// A program of somebody else: it has an entry point of its own, defines nothing that the updater
// defines, and uses the components for what they are made for.
//
// usage: consumer CABINET INIFILE
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "components/CabFile.h"
#include "components/clsIniFile.h"
#include "components/clsSysInfo.h"
#include "runtime/runtime_error.h"

namespace {

void PrintLine(const std::string& text) { std::printf("%s\n", text.c_str()); }

void ListCabinet(const std::string& path) {
    swiftpatch::CabFile cab;
    cab.CabName = path;
    PrintLine(std::to_string(cab.FileCount()) + " files");
    for (const swiftpatch::CabFileInfo& file : cab.GetInfo()) {
        PrintLine(file.fullName + ": " + std::to_string(file.size) + " bytes");
    }
}

void WriteAndRead(const std::string& path) {
    swiftpatch::clsIniFile ini;
    ini.SetINIFile(path);
    ini.WriteFile("Window", "Left", "120");
    PrintLine("Left is " + ini.GetKey("Window", "Left", "unknown"));
    PrintLine("Top is " + ini.GetKey("Window", "Top", "unknown"));
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*arguments*/,
                   int /*show*/) {
    if (__argc != 3) {
        return 2;
    }
    try {
        ListCabinet(__argv[1]);
        WriteAndRead(__argv[2]);
        PrintLine("This is " + swiftpatch::clsSysInfo().Version());
    } catch (const swiftpatch::RuntimeError& error) {
        PrintLine(error.Source() + ": " + error.Description());
        return 1;
    }
    return 0;
}
