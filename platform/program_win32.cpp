// Set-up of the C library for the programs: it replaces *.mid by the names of files, as shells do
// on Linux.
extern "C" {
extern int _dowildcard;
int _dowildcard = -1;
}
