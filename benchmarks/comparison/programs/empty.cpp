// The process that does nothing: what starting any program costs.
int main() {}
