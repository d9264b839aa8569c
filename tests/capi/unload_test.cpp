// SPDX-License-Identifier: Apache-2.0
// Loading and unloading the library at run time, and ending the process in the middle of things.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Documents.h"
#include "support/LeaksByContract.h"
#include "support/ScriptedEngine.h"

namespace {

// Runs `body` in a process of its own and returns its wait status.
template <class Body>
int in_child(Body body) {
  const pid_t child = fork();
  if (child == 0) {
    body();
    std::exit(0);
  }
  int status = -1;
  waitpid(child, &status, 0);
  return status;
}

class LoadedLibrary {
 public:
  LoadedLibrary() : _handle(dlopen(ZELK_LIBRARY, RTLD_NOW)) {}

  template <class Function>
  Function* get(const char* name) const {
    return reinterpret_cast<Function*>(dlsym(_handle, name));
  }
  // The document stays open when the library is unloaded or the process ends.
  void load(const std::string& document) const {
    const LeaksByContract open_document;
    if (get<int(const char*, int)>("zelk_load_image_document")(document.c_str(), 72) < 1) _exit(2);
  }
  void start(const std::string& directory) const {
    if (get<int(const char*)>("zelk_init_engine")(directory.c_str()) != 0) _exit(3);
  }
  void close() const {
    if (dlclose(_handle) != 0) _exit(4);
  }

 private:
  void* _handle;
};

class Unload : public testing::Test {
 protected:
  void SetUp() override {
    write_pdf(folder.path("a.pdf"), {PdfPage()});
    write_tiff(folder.path("a.tif"), 5, 4, 2);
    write_image(folder.path("a.png"), 5, 4);
  }
  ScratchFolder folder;
};

TEST_F(Unload, ProcessEndsCleanlyWithADocumentOpenAndTheEngineRunning) {
  for (const char* name : {"a.pdf", "a.tif", "a.png"}) {
    EXPECT_EQ(in_child([&] {
                const LoadedLibrary library;
                library.start(fake_directory("fixed"));
                library.load(folder.path(name));
              }),
              0)
        << name;
  }
}

TEST_F(Unload, LibraryUnloadsWithADocumentOpen) {
  for (const char* name : {"a.pdf", "a.tif", "a.png"}) {
    EXPECT_EQ(in_child([&] {
                const LoadedLibrary library;
                library.start(fake_directory("fixed"));
                library.load(folder.path(name));
                library.close();
              }),
              0)
        << name;
  }
}

TEST_F(Unload, UnloadingLeavesTheEngineToTheHost) {
  EXPECT_EQ(in_child([] {
              const ScriptedEngine fake;
              const LoadedLibrary library;
              library.start(fake.directory);
              library.close();
              if (fake.calls.size() != 1) _exit(5);
            }),
            0);
}

TEST_F(Unload, LibraryCanBeLoadedAgain) {
  EXPECT_EQ(in_child([&] {
              for (int round = 0; round < 3; ++round) {
                const LoadedLibrary library;
                library.load(folder.path("a.tif"));
                if (library.get<int()>("zelk_recognize")() != 0) _exit(6);
                library.close();
              }
            }),
            0);
}

}  // namespace
