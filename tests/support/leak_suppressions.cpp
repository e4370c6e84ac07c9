// What the leak checker is to pass over, in silence: fontconfig keeps its patterns until the process ends.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
