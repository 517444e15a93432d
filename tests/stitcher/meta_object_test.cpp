#include <gtest/gtest.h>

#include <QMetaMethod>
#include <QSignalSpy>

#include "jqimagestitching.h"

namespace {

struct Row {
  const char* signature;
  const char* parameter;  // null: none
  QMetaMethod::MethodType type;
  QMetaMethod::Access access;
};

const Row kMethods[] = {
    {"sglMultiImageProcessStatus(QString)", "text", QMetaMethod::Signal, QMetaMethod::Public},
    {"sglMultiImageProcessFinished(void*)", "dst", QMetaMethod::Signal, QMetaMethod::Public},
    {"sglSystemMemoryNotEnough()", nullptr, QMetaMethod::Signal, QMetaMethod::Public},
    {"slotStartStitching()", nullptr, QMetaMethod::Slot, QMetaMethod::Private},
};

}  // namespace

TEST(MetaObject, ClassName) {
  EXPECT_STREQ(JQImageStitching::staticMetaObject.className(), "JQImageStitching");
  EXPECT_STREQ(JQImageStitching::staticMetaObject.superClass()->className(), "QObject");
}

TEST(MetaObject, ExactlyFourMethodsInOrder) {
  const QMetaObject& meta = JQImageStitching::staticMetaObject;
  ASSERT_EQ(meta.methodCount() - meta.methodOffset(), 4);
  for (int i = 0; i < 4; ++i) {
    const QMetaMethod method = meta.method(meta.methodOffset() + i);
    const Row& row = kMethods[i];
    EXPECT_EQ(method.methodSignature().toStdString(), row.signature);
    EXPECT_EQ(method.methodType(), row.type) << row.signature;
    EXPECT_EQ(method.access(), row.access) << row.signature;
    EXPECT_EQ(method.returnType(), static_cast<int>(QMetaType::Void)) << row.signature;
    const QList<QByteArray> names = method.parameterNames();
    if (row.parameter == nullptr) {
      EXPECT_TRUE(names.isEmpty()) << row.signature;
    } else {
      ASSERT_EQ(names.size(), 1) << row.signature;
      EXPECT_EQ(names[0].toStdString(), row.parameter);
    }
  }
}

TEST(MetaObject, NoPropertiesEnumsOrConstructors) {
  const QMetaObject& meta = JQImageStitching::staticMetaObject;
  EXPECT_EQ(meta.propertyCount(), meta.propertyOffset());
  EXPECT_EQ(meta.enumeratorCount(), meta.enumeratorOffset());
  EXPECT_EQ(meta.constructorCount(), 0);
  EXPECT_EQ(meta.classInfoCount(), meta.classInfoOffset());
}

TEST(MetaObject, TextIsPassedByConstReference) {
  void (JQImageStitching::*status)(const QString&) = &JQImageStitching::sglMultiImageProcessStatus;
  void (JQImageStitching::*finished)(void*) = &JQImageStitching::sglMultiImageProcessFinished;
  void (JQImageStitching::*memory)() = &JQImageStitching::sglSystemMemoryNotEnough;
  EXPECT_TRUE(QMetaMethod::fromSignal(status).isValid());
  EXPECT_TRUE(QMetaMethod::fromSignal(finished).isValid());
  EXPECT_TRUE(QMetaMethod::fromSignal(memory).isValid());
}

TEST(MetaObject, TheHostsSignalReachesItsReceiver) {
  JQImageStitching stitcher;
  const QSignalSpy spy(&stitcher, &JQImageStitching::sglSystemMemoryNotEnough);
  emit stitcher.sglSystemMemoryNotEnough();
  EXPECT_EQ(spy.count(), 1);
}
