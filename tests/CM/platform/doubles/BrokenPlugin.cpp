// A library that needs a symbol that no library defines.
extern "C" {
int nobodyHasThis();
[[gnu::visibility("default")]] int answer();
int answer() { return nobodyHasThis(); }
}
