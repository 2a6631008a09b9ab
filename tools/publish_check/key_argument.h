#pragma once

#include <string>

namespace publish_check {

/// The signing key that an argument gives, itself or as the name of a minisign.pub, whose second
/// line it is. Throws UsageError where there is none.
std::string ReadKeyArgument(const std::string& argument);

/// Whether an argument that follows a key is meant as another one: a file, or the beginning that
/// every key has.
bool LooksLikeKeyArgument(const std::string& argument);

/// Throws UsageError for keys, as a data file names them, of which an updater takes none though
/// each is good.
void CheckKeysTogether(const std::string& keys);

}  // namespace publish_check
