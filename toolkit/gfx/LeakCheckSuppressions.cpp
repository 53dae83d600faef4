// Builds with the address sanitizer check for leaks at exit. The font system (fontconfig, and the shaper's
// font map above it) keeps process-wide caches that it never frees, part of them no longer pointed at by the
// end; those are not ours to fix and would fail every program that draws text. A window on a real X11 display
// brings in the graphics driver and the desktop bus, which keep allocations of their own until exit likewise. The sanitizer asks for this
// function by name; it only exists in sanitizer builds (GCC and clang say so differently).
#if defined(__SANITIZE_ADDRESS__)
#define TESSEL_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESSEL_ADDRESS_SANITIZER 1
#endif
#endif

#if defined(TESSEL_ADDRESS_SANITIZER)

extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libfontconfig.so\n"
           "leak:libpangoft2-1.0.so\n"
           "leak:libpangocairo-1.0.so\n"
           "leak:libpango-1.0.so\n"
           "leak:libGLX_mesa.so\n"
           "leak:libdbus-1.so\n";
}

#endif
