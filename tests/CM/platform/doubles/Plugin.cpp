// A library for the loading tests.
extern "C" {
[[gnu::visibility("default")]] int answer();
int answer() { return 42; }
}
