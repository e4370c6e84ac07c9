// What the leak checker is to pass over: fontconfig keeps its patterns until the process ends.

extern "C" const char* __lsan_default_suppressions();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig";
}
