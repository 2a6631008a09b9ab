#pragma once

// The one place of the drivers that includes the platform's headers, in the order they need.
#include <windows.h>
#include <winsock2.h>
