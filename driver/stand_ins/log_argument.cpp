#include <fstream>

// Notes the file that it was asked to open, beside itself: "log_argument.exe <log> <file>".
int main(int argc, char** argv) {
  if (argc < 3) return 1;
  std::ofstream(argv[1], std::ios::app) << argv[2] << '\n';
}
