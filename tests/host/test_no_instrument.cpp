// A library that loads but has no entry point of a plug-in.
extern "C" int answer() {
    return 42;
}
