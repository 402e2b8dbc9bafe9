/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** What the layers above the core put into it is freed at the end of a case. */
#ifndef VELKOR_TESTS_SUPPORT_LAYER_FIXTURES_H
#define VELKOR_TESTS_SUPPORT_LAYER_FIXTURES_H

#include <utility>

#include <velkor/zox_category.h>
#include <velkor/zox_groups.h>
#include <velkor/zox_mail.h>
#include <velkor/zox_tags.h>

#include "tests/support/core_fixture.h"
#include "tests/support/server_fixture.h"

namespace velkor::test {

/** For tests that link the newsgroups and tags. */
template <typename Test>
class WithTables : public Test {
protected:
  ~WithTables() override {
    if (core->tags != nullptr)
      zox_tags_free();
    zox_group_free_all();
  }
};

/** For tests that link the category tree as well. */
template <typename Test>
class WithCategories : public WithTables<Test> {
protected:
  ~WithCategories() override {
    if (core->categories != nullptr)
      zox_categories_free();
  }
};

/** For tests that link the services as well. */
template <typename Test>
class WithMail : public WithCategories<Test> {
protected:
  ~WithMail() override { zox_mail_free(std::exchange(core->mail, nullptr)); }
};

using TableTest = WithTables<CoreTest>;
using CategoryTest = WithCategories<CoreTest>;
using LibraryTest = WithMail<CoreTest>;
using LibraryServerTest = WithMail<ServerCoreTest>;

}  // namespace velkor::test

#endif
