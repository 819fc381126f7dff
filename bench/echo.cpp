// The least that answering lines costs a C++ program: what is read is written, each line before the next is
// read.
#include <iostream>
#include <string>

int main() {
  std::string line;
  while (std::getline(std::cin, line)) std::cout << line << std::endl;
}
