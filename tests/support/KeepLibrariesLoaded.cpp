// Linked into tests that use OpenGL, under AddressSanitizer only. Mesa's drivers are loaded at run time, leak a
// little and are unloaded before the leaks are counted; then nobody can tell any more whose they were. With a dlclose
// that does nothing they stay attributable and can be suppressed by name, so that every leak of ours is still found.
extern "C" __attribute__((visibility("default"))) int dlclose(void* /*library*/) {
    return 0;
}
