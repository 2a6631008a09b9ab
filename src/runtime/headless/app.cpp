#include "runtime/app.h"

#include "runtime/headless/world.h"
#include "runtime/program.h"

namespace swiftpatch::App {

using headless::TheWorld;

std::string Path() { return TheWorld().machine.applicationFolder; }

std::string Title() { return kProgram.title; }

int Major() { return TheWorld().machine.major; }

int Minor() { return TheWorld().machine.minor; }

int Revision() { return TheWorld().machine.revision; }

bool PrevInstance() { return TheWorld().machine.prevInstance; }

}  // namespace swiftpatch::App
