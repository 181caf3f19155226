#include "driver/await.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "driver/files.h"

namespace driver {

void RaiseTimeout(const std::string& what) {
  std::string name = "stuck";
  if (const auto* test = testing::UnitTest::GetInstance()->current_test_info())
    name += std::string(" ") + test->test_suite_name() + " " + test->name();
  std::replace(name.begin(), name.end(), '/', ' ');
  SaveScreenshot(name);
  throw std::runtime_error("Waited in vain: " + what);
}

}  // namespace driver
