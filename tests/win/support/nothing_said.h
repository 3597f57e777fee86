// While one lives, the machine is on line, so that a report would be shown, and nothing may be shown. The test's preparation
// runs the proxy, and the test has a display.
#pragma once

#include <gtest/gtest.h>

#include "connection.h"
#include "message_box_user.h"

class NothingSaid {
 public:
  NothingSaid() { GoOnline(); }
  NothingSaid(const NothingSaid&) = delete;
  NothingSaid& operator=(const NothingSaid&) = delete;
  ~NothingSaid() {
    for (const ShownBox& box : user_.Boxes()) ADD_FAILURE() << "a message says \"" << box.text << '"';
    GoOffline();
  }

 private:
  MessageBoxUser user_;
};
