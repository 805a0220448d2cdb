#include <gtest/gtest.h>

#include <cstdint>

#include "platform/DynamicLibrary.h"
#include "platform/Registry.h"
#include "support/FaultTreePlusInstallation.h"
#include "support/ProcessStateTest.h"

namespace FTS {
namespace {

class DynamicLibraryTest : public ProcessStateTest {
 protected:
  using Validate = std::int32_t(std::int32_t, std::int32_t);

  FaultTreePlusInstallation installation;
};

TEST_F(DynamicLibraryTest, EntryIsFoundByItsDecoratedName) {
  const auto library = installation.Load();
  const auto validate = library->Find<Validate>("_PSADLLValidate@8");
  ASSERT_NE(validate, nullptr);
  EXPECT_EQ(validate(3, -4), 1);
  EXPECT_EQ(CallsOf(*library), "Validate(3, -4)\n");
}

TEST_F(DynamicLibraryTest, EntryThatIsNotThereIsNull) {
  EXPECT_EQ(installation.Load()->Find<Validate>("_PSADLLNothing@8"), nullptr);
}

TEST_F(DynamicLibraryTest, FileThatIsNotThereIsNoLibrary) {
  EXPECT_EQ(DynamicLibrary::Load(installation.PathOfLibrary() + "x"), nullptr);
}

TEST_F(DynamicLibraryTest, LibraryIsUnloadedWithItsLastObject) {
  auto library = installation.Load();
  library->Find<Validate>("_PSADLLValidate@8")(1, 2);
  EXPECT_NE(CallsOf(*installation.Load()), "");
  library = nullptr;
  EXPECT_EQ(CallsOf(*installation.Load()), "");  // Loaded anew, it remembers nothing.
}

TEST_F(DynamicLibraryTest, LibraryThatStaysOutlivesItsObject) {
  auto library = installation.Load();
  library->Find<Validate>("_PSADLLValidate@8")(1, 2);
  library->StayLoaded();
  library = nullptr;
  EXPECT_EQ(CallsOf(*installation.Load()), "Validate(1, 2)\n");
}

TEST_F(DynamicLibraryTest, ThisSystemHasNoRegistry) {
  const auto held = Registry::Replace(nullptr);
  EXPECT_EQ(Registry::Instance(), nullptr);
}

}  // namespace
}  // namespace FTS
