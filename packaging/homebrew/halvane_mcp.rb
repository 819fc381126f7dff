# The formula, but for what only a release knows: script/package fills in what stands between two at signs.
class HalvaneMcp < Formula
  desc "Read-only access to a Halvane journal for AI assistants"
  homepage "@HOMEPAGE@"
  url "@ADDRESS@"
  sha256 "@SHA256@"

  depends_on "boost" => :build
  depends_on "cmake" => :build
  depends_on "icu4c" => :build
  depends_on "ninja" => :build

  on_linux do
    depends_on "pkgconf" => :build
    depends_on "expat"
  end

  def install
    system "cmake", "--preset", "release", "-B", "build", *std_cmake_args
    system "cmake", "--build", "build"
    system "cmake", "--install", "build"
  end

  test do
    ping = '{"jsonrpc":"2.0","id":1,"method":"ping"}'
    assert_equal %Q({"jsonrpc":"2.0","id":1,"result":{}}\n), pipe_output(bin/"halvane_mcp", "#{ping}\n", 0)
    # There is no journal here, and that is what it says.
    assert_match "Where the journal is", shell_output(bin/"halvane_doctor", 1)
  end
end
