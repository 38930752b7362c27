// A library that loads but has no plug-in entry point.
extern "C" int answer() {
    return 42;
}
