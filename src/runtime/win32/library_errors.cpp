// What the standard library calls when one of its contracts is broken: a text longer than can be, a
// place that is not there. Nobody traps these by their kind, so here they are one small exception.
// The library's own ones keep their words in a second kind of string, and the whole of that, with
// the source of random numbers that it draws in, is a fifth of the program.
#include <cstdlib>
#include <exception>
#include <new>
#include <string>

namespace {

class BrokenContract final : public std::exception {};

}  // namespace

namespace std {

void __throw_bad_alloc() { throw bad_alloc(); }
void __throw_bad_array_new_length() { throw bad_alloc(); }
void __throw_length_error(const char* /*what*/) { throw BrokenContract(); }
void __throw_logic_error(const char* /*what*/) { throw BrokenContract(); }
void __throw_out_of_range_fmt(const char* /*what*/, ...) { throw BrokenContract(); }

}  // namespace std

namespace __gnu_cxx {

/// Takes the place of the library's handler for what should never happen, which prints the type of
/// an exception to a console that is not there; with what it needs for that it is the largest part
/// of the library.
void __verbose_terminate_handler() { std::abort(); }

}  // namespace __gnu_cxx
