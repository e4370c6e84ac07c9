// Gives precompiled headers a target to belong to.
int main() {}
