extern "C" int Play(int argc, char** argv);

int main(int argc, char** argv) {
  return Play(argc, argv);
}
