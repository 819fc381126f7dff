// The least that a C++ program costs: started, one line, ended.
#include <iostream>

int main() {
  std::cout << "hello, world\n";
}
