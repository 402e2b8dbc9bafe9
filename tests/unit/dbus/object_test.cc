/* SPDX-License-Identifier: LGPL-2.1-or-later */
/** The exported object by itself: type, signals, methods and their marshallers. */
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <velkor/zox_dbus.h>

#include "dbus/dbus_glib.h"
#include "support/owned.h"
#include "tests/support/log_capture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using velkor::OwnedObject;
using velkor::velkor_dbus_object_info;
using velkor::test::LogCapture;

OwnedObject<VelkorDBusObject> new_object() {
  return OwnedObject<VelkorDBusObject>(
      static_cast<VelkorDBusObject *>(g_object_new(velkor_dbus_object_get_type(), nullptr)));
}

/** What the signals of an object brought. */
struct Heard {
  int fronts = 0;
  std::vector<int> postings;

  explicit Heard(VelkorDBusObject *object) {
    g_signal_connect(object, "bring_to_front", G_CALLBACK(on_front), this);
    g_signal_connect(object, "open_posting", G_CALLBACK(on_posting), this);
  }
  static void on_front(VelkorDBusObject *, gpointer self) { ++static_cast<Heard *>(self)->fronts; }
  static void on_posting(VelkorDBusObject *, gint postId, gpointer self) {
    static_cast<Heard *>(self)->postings.push_back(postId);
  }
};

TEST(VelkorDBusObject, IsAPlainObjectUnderItsName) {
  const GType type = velkor_dbus_object_get_type();
  EXPECT_STREQ(g_type_name(type), "VelkorDBusObject");
  EXPECT_EQ(g_type_parent(type), G_TYPE_OBJECT);
  EXPECT_EQ(velkor_dbus_object_get_type(), type);
  GTypeQuery query{};
  g_type_query(type, &query);
  EXPECT_EQ(query.class_size, sizeof(GObjectClass));
  EXPECT_EQ(query.instance_size, sizeof(VelkorDBusObject));
}

TEST(VelkorDBusObject, HasTwoDetailedRunLastSignals) {
  const auto object = new_object();
  GSignalQuery query{};
  g_signal_query(g_signal_lookup("bring_to_front", velkor_dbus_object_get_type()), &query);
  EXPECT_EQ(query.signal_flags, G_SIGNAL_RUN_LAST | G_SIGNAL_DETAILED);
  EXPECT_EQ(query.return_type, G_TYPE_NONE);
  EXPECT_EQ(query.n_params, 0U);
  g_signal_query(g_signal_lookup("open_posting", velkor_dbus_object_get_type()), &query);
  EXPECT_EQ(query.signal_flags, G_SIGNAL_RUN_LAST | G_SIGNAL_DETAILED);
  EXPECT_EQ(query.return_type, G_TYPE_NONE);
  ASSERT_EQ(query.n_params, 1U);
  EXPECT_EQ(query.param_types[0], G_TYPE_INT);
}

TEST(VelkorDBusObject, MethodsTraceEmitAndSucceed) {
  const auto object = new_object();
  const Heard heard(object.get());
  testing::internal::CaptureStdout();
  EXPECT_EQ(velkor_dbus_bring_to_front(object.get(), nullptr), TRUE);
  EXPECT_EQ(velkor_dbus_open_posting(object.get(), -7, nullptr), TRUE);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "velkor_dbus_bring_to_front\nvelkor_dbus_open_posting(-7)\n");
  EXPECT_EQ(heard.fronts, 1);
  EXPECT_THAT(heard.postings, ElementsAre(-7));
}

TEST(VelkorDBusObject, TellsTheKindOfFrontEnd) {
  const auto object = new_object();
  object->isGui = 5;
  testing::internal::CaptureStdout();
  EXPECT_EQ(velkor_dbus_is_gui(object.get()), 5);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "velkor_dbus_is_gui\n");
}

TEST(Service, IsNotThereBeforeItStarts) {
  EXPECT_EQ(zox_dbus_get_object(), nullptr);
  zox_dbus_cleanup();
  EXPECT_EQ(zox_dbus_get_object(), nullptr);
}

/** Calls of the two marshallers as dbus-glib makes them, with values of the test's choice. */
class MarshallerTest : public testing::Test {
protected:
  MarshallerTest() {
    g_value_init(&result, G_TYPE_BOOLEAN);
    g_value_init(&values[0], velkor_dbus_object_get_type());
    g_value_set_object(&values[0], object.get());
  }
  ~MarshallerTest() override { g_value_unset(&values[0]); }

  void call(int method, GValue *place, guint count) {
    const DBusGMethodInfo &info = velkor_dbus_object_info.method_infos[method];
    testing::internal::CaptureStdout();
    info.marshaller(nullptr, place, count, values.data(), nullptr,
                    reinterpret_cast<gpointer>(info.function));
    printed = testing::internal::GetCapturedStdout();
  }

  OwnedObject<VelkorDBusObject> object = new_object();
  std::array<GValue, 3> values{};
  GValue result{};
  std::string printed;
};

TEST_F(MarshallerTest, CallsAMethodWithoutArguments) {
  g_value_init(&values[1], G_TYPE_POINTER);
  call(0, &result, 2);
  EXPECT_EQ(printed, "velkor_dbus_bring_to_front\n");
  EXPECT_TRUE(g_value_get_boolean(&result));
}

TEST_F(MarshallerTest, CallsAMethodWithANumber) {
  g_value_init(&values[1], G_TYPE_INT);
  g_value_set_int(&values[1], 42);
  g_value_init(&values[2], G_TYPE_POINTER);
  call(1, &result, 3);
  EXPECT_EQ(printed, "velkor_dbus_open_posting(42)\n");
  EXPECT_TRUE(g_value_get_boolean(&result));
}

TEST_F(MarshallerTest, FallsBackOnTheFunctionOfTheClosure) {
  g_value_init(&values[1], G_TYPE_POINTER);
  const DBusGMethodInfo &info = velkor_dbus_object_info.method_infos[0];
  GClosure *closure = g_cclosure_new(info.function, nullptr, nullptr);
  testing::internal::CaptureStdout();
  info.marshaller(closure, &result, 2, values.data(), nullptr, nullptr);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "velkor_dbus_bring_to_front\n");
  g_closure_sink(closure);
}

TEST_F(MarshallerTest, RefusesTheWrongNumberOfValues) {
  const LogCapture log;
  call(0, &result, 3);
  EXPECT_EQ(printed, "");
  call(1, &result, 2);
  EXPECT_EQ(printed, "");
  EXPECT_THAT(log.criticals(), ElementsAre(HasSubstr("'n_param_values == 2' failed"),
                                           HasSubstr("'n_param_values == 3' failed")));
}

TEST_F(MarshallerTest, NeedsAPlaceForTheResult) {
  const LogCapture log;
  call(0, nullptr, 2);
  call(1, nullptr, 3);
  EXPECT_THAT(log.criticals(), ElementsAre(HasSubstr("'return_value != NULL' failed"),
                                           HasSubstr("'return_value != NULL' failed")));
}

}  // namespace
