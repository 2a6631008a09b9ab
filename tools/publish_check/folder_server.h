#pragma once

#include <filesystem>

#include "publish_check/server_state.h"

namespace publish_check {

/// What a plain web server would answer that publishes this folder: the sizes and dates of its
/// files, and "404 Not Found" for what is not there. Throws std::runtime_error when the folder or a
/// file of it cannot be read. The signature is read `withSignature` only.
ServerState ReadFolder(const std::filesystem::path& folder, bool withSignature = false);

/// The same of one file. Throws as ReadFolder does.
PublishedFile ReadPublishedFile(const std::filesystem::path& folder, const std::string& name);

}  // namespace publish_check
