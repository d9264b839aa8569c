// SPDX-License-Identifier: Apache-2.0
// Two copies of the library in one process, as when a host and a plug-in each bring one.
#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "api/zelkAPI.h"
#include "support/Documents.h"
#include "support/ScriptedEngine.h"

namespace {

// The library that this program is linked to is in use; its copy is opened, used beside it and,
// unless the process ends first, closed.
void use_both(const std::string& copy, const ScratchFolder& folder, bool closes) {
  const std::string page = folder.path("a.tif");
  if (zelk_init_engine(fake_directory("fixed").c_str()) != 0) _exit(2);
  if (zelk_load_image_document(page.c_str(), 72) != 2 || zelk_recognize() != 0) _exit(3);
  void* const other = dlopen(copy.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (other == nullptr) _exit(4);
  const auto load = reinterpret_cast<decltype(&zelk_load_image_document)>(
      dlsym(other, "zelk_load_image_document"));
  const auto recognize =
      reinterpret_cast<decltype(&zelk_recognize)>(dlsym(other, "zelk_recognize"));
  const auto text =
      reinterpret_cast<decltype(&zelk_get_ocr_string)>(dlsym(other, "zelk_get_ocr_string"));
  if (dlsym(other, "_pdf_process") == dlsym(RTLD_DEFAULT, "_pdf_process")) _exit(5);
  if (recognize() != 2) _exit(6);  // no document of its own
  if (load(page.c_str(), 72) != 2 || recognize() != 0 || text() != std::string()) _exit(7);
  if (zelk_get_ocr_string() != std::string("fixed\nfixed\n")) _exit(8);
  if (closes && dlclose(other) != 0) _exit(9);
  if (zelk_recognize() != 0) _exit(10);
}

TEST(Copies, OfTheLibraryServeOneProcessIndependently) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the address sanitizer takes two copies of one object for a mistake";
#endif
  const ScratchFolder folder;
  write_tiff(folder.path("a.tif"), 5, 4, 2);
  const std::string copy = folder.path("libcopy.so");
  std::filesystem::copy_file(ZELK_LIBRARY, copy);
  for (const bool closes : {false, true}) {
    const pid_t child = fork();
    if (child == 0) {
      use_both(copy, folder, closes);
      std::exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0) << "exit status " << WEXITSTATUS(status);
  }
}

}  // namespace
