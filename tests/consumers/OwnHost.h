// The host of examples/OwnHost.cpp for other programs. Its `main` is `PlayFile` here.
#define main PlayFile
#include "../../examples/OwnHost.cpp"
#undef main
