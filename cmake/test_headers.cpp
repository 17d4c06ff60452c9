// The program that the tests' precompiled headers belong to: it is compiled as the tests are.
int main() {
  return 0;
}
