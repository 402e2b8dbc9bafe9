/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "support/object_type.h"

#include <gtest/gtest.h>

#include "support/owned.h"

namespace velkor {
namespace {

struct Sample {
  GObject parent;
  int value;
};

int finalized = 0;

void init(Sample &sample) {
  sample.value = 7;
}
void finalize(Sample &sample) {
  finalized += sample.value;
}

GType sample_type() {
  static const GType type = register_object_type<Sample, init, finalize>("VelkorSample");
  return type;
}

TEST(ObjectType, InstancesAreInitialisedAndFinalised) {
  finalized = 0;
  OwnedObject<Sample> sample(static_cast<Sample *>(g_object_new(sample_type(), nullptr)));
  EXPECT_EQ(sample->value, 7);
  EXPECT_EQ(finalized, 0);
  sample.reset();
  EXPECT_EQ(finalized, 7);
}

TEST(ObjectType, AttachedDataIsReleased) {
  bool released = false;
  const auto note = [](gpointer flag) { *static_cast<bool *>(flag) = true; };
  OwnedObject<Sample> sample(static_cast<Sample *>(g_object_new(sample_type(), nullptr)));
  g_object_set_data_full(&sample->parent, "iets", &released, note);
  sample.reset();
  EXPECT_TRUE(released);
}

TEST(ObjectType, DerivesFromTheBaseClass) {
  EXPECT_EQ(g_type_parent(sample_type()), G_TYPE_OBJECT);
  EXPECT_STREQ(g_type_name(sample_type()), "VelkorSample");
}

TEST(ObjectType, TellsItsInstancesFromOthers) {
  const OwnedObject<Sample> sample(static_cast<Sample *>(g_object_new(sample_type(), nullptr)));
  const OwnedObject<GObject> other(static_cast<GObject *>(g_object_new(G_TYPE_OBJECT, nullptr)));
  EXPECT_TRUE(is_instance(sample.get(), sample_type()));
  EXPECT_FALSE(is_instance(other.get(), sample_type()));
  EXPECT_FALSE(is_instance(nullptr, sample_type()));
}

}  // namespace
}  // namespace velkor
