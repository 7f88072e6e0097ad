extern "C" int PlayFirst(int argc, char** argv);
extern "C" int PlaySecond(int argc, char** argv);

int main(int argc, char** argv) {
  return PlayFirst(argc, argv) + PlaySecond(argc, argv);
}
