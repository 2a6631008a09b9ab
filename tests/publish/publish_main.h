#pragma once

namespace publish {

/// How often publish is ended by force: --kills=N.
int Kills();

}  // namespace publish
