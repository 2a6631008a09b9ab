// Parts of the standard library that stand here so that the library's own objects stay out of the
// program: each of those would bring much more with it than the one function that is wanted.
#include <exception>
#include <string>

#include "runtime/win32/win32.h"

#if _GLIBCXX_RELEASE >= 13
// Newer libraries hold this one function ready for everybody, beside all the other ones of a text,
// which the program has already: 26 KiB.
template void std::string::_M_replace_cold(char* place, size_type length, const char* text,
                                           const size_type textLength, const size_type behind);
#endif

// The library's locks, which throwing an exception needs, lie in one object with two functions that
// nothing here calls: trying a lock, and telling one thread from another. Newer libraries leave
// those two to functions of the system that came after Windows 95 and XP, and a program with an
// import that the system lacks does not start. So the import is this instead.
namespace {

[[noreturn]] void WINAPI NotOnEverySystem() { std::terminate(); }

using Import = void(WINAPI*)();

}  // namespace

extern "C" {
extern const Import importOfTryEnterCriticalSection __asm__("__imp__TryEnterCriticalSection@4");
extern const Import importOfGetThreadId __asm__("__imp__GetThreadId@4");
const Import importOfTryEnterCriticalSection = NotOnEverySystem;
const Import importOfGetThreadId = NotOnEverySystem;
}
