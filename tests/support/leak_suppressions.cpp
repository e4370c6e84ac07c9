// What the leak checker is to pass over, in silence: fontconfig keeps its patterns until the process ends, and so
// does the message bus, by which assistive technology is reached, with its connection.

extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_options();

extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n"
           "leak:libdbus-1\n";
}

extern "C" const char* __lsan_default_options() {
    return "print_suppressions=0";
}
