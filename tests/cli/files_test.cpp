#include "files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace quill::cli {
namespace {

namespace fs = std::filesystem;

class FilesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    root_ = fs::temp_directory_path() /
            ("quill-cli-files-" + std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    fs::remove_all(root_);
    fs::create_directories(root_);
  }
  void TearDown() override { fs::remove_all(root_); }

  std::string Put(const std::string& relative, const std::string& content) {
    const fs::path path = root_ / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  std::vector<std::string> Names(const std::vector<InputFile>& files) {
    std::vector<std::string> names;
    for (const InputFile& f : files) names.push_back(f.displayName + (f.error.empty() ? "" : " !"));
    return names;
  }

  fs::path root_;
};

TEST_F(FilesTest, FolderWalkSortsAndFilters) {
  Put("dir/b.sv", "");
  Put("dir/a.v", "");
  Put("dir/sub/c.svh", "");
  Put("dir/D.VH", "");
  Put("dir/notes.txt", "");
  Put("dir/pins.xdc", "");
  Put("dir/.hidden/e.v", "");
  Put("dir/.f.v", "");
  const std::string dir = (root_ / "dir").string();
  EXPECT_EQ(Names(ExpandInputs({dir}, kVerilogExtensions, "<stdin>")),
            (std::vector<std::string>{dir + "/D.VH", dir + "/a.v", dir + "/b.sv", dir + "/sub/c.svh"}));
  EXPECT_EQ(Names(ExpandInputs({dir}, kConstraintExtensions, "<stdin>")),
            (std::vector<std::string>{dir + "/pins.xdc"}));
}

TEST_F(FilesTest, NamedFilesAreTakenWhateverTheirExtension) {
  const std::string notes = Put("notes.txt", "");
  EXPECT_EQ(Names(ExpandInputs({notes, "-", "missing.v"}, kVerilogExtensions, "top.v")),
            (std::vector<std::string>{notes, "top.v", "missing.v"}));
  EXPECT_TRUE(ExpandInputs({"-"}, kVerilogExtensions, "x")[0].isStdin);
}

TEST_F(FilesTest, FileReachedTwiceIsListedOnce) {
  const std::string a = Put("dir/a.v", "");
  const std::string dir = (root_ / "dir").string();
  const std::string dotted = (root_ / "dir" / "." / "a.v").string();
  EXPECT_EQ(Names(ExpandInputs({a, dir, dotted, "-", "-"}, kVerilogExtensions, "<stdin>")),
            (std::vector<std::string>{a, "<stdin>"}));
}

TEST_F(FilesTest, FolderWithoutMatchingFilesIsAnError) {
  Put("dir/readme.md", "");
  const std::string dir = (root_ / "dir").string();
  const std::vector<InputFile> files = ExpandInputs({dir}, kVerilogExtensions, "<stdin>");
  ASSERT_EQ(files.size(), 1u);
  EXPECT_EQ(files[0].error, dir + ": folder holds no .v, .sv, .vh or .svh files");
  EXPECT_EQ(ReadInput(files[0]).error, files[0].error);
}

TEST_F(FilesTest, ReadsBytesAsTheyAre) {
  const std::string content = std::string("a\r\n\xff\x01z", 6);
  const std::string path = Put("x.v", content);
  const ReadResult read = ReadInput(InputFile{path, path, false, ""});
  EXPECT_EQ(read.error, "");
  EXPECT_EQ(read.text, content);
}

TEST_F(FilesTest, NulInFirst8kBIsBinary) {
  const std::string inside = Put("in.v", std::string(8191, 'a') + '\0');
  const std::string outside = Put("out.v", std::string(8192, 'a') + '\0');
  EXPECT_EQ(ReadInput(InputFile{"in.v", inside, false, ""}).error,
            "in.v: binary file (a NUL byte in its first 8 kB), skipped");
  const ReadResult read = ReadInput(InputFile{"out.v", outside, false, ""});
  EXPECT_EQ(read.error, "");
  EXPECT_EQ(read.text.size(), 8193u);
}

TEST_F(FilesTest, MissingAndNotAFile) {
  EXPECT_EQ(ReadInput(InputFile{"nope.v", root_ / "nope.v", false, ""}).error, "nope.v: No such file or directory");
  const std::string a = Put("a.v", "");
  EXPECT_EQ(ReadInput(InputFile{"a.v/b.v", fs::path(a) / "b.v", false, ""}).error, "a.v/b.v: Not a directory");
  EXPECT_EQ(ReadInput(InputFile{"dir", root_, false, ""}).error, "dir: Is a directory");
}

TEST_F(FilesTest, WriteOutputReplacesContent) {
  const std::string path = Put("w.v", "old content that is longer");
  EXPECT_EQ(WriteOutput(InputFile{"w.v", path, false, ""}, "new\n"), "");
  EXPECT_EQ(ReadInput(InputFile{"w.v", path, false, ""}).text, "new\n");
  EXPECT_EQ(WriteOutput(InputFile{"d/w.v", root_ / "d" / "w.v", false, ""}, "x"),
            "d/w.v: cannot write: No such file or directory");
}

}  // namespace
}  // namespace quill::cli
