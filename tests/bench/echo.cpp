// The least that answering lines costs a C++ program: it writes each line back before it reads the next.
#include <iostream>
#include <string>

int main() {
  std::string line;
  while (std::getline(std::cin, line)) std::cout << line << std::endl;
}
