#pragma once

#include <string>

namespace swiftpatch::real_system {

/// What clsSysInfo says in this process: display text, platform, service pack's text and numbers,
/// the flags NT, 2K, XP, 95, 98, ME, "product " and its name, and last the number of the product
/// as the platform itself gives it; parts are separated by "|".
std::string SysInfoReport();

}  // namespace swiftpatch::real_system
