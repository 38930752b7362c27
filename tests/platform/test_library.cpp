// A library to be loaded by the tests.
extern "C" int answer() {
    return 42;
}
