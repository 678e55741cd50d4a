// A library that needs what nobody has.
extern "C" {
int nobodyHasThis();
[[gnu::visibility("default")]] int answer();
int answer() { return nobodyHasThis(); }
}
