// The memory that the engine shares with its window.
#include <atomic>
#include <thread>

#include "tests/engine/Drawing.h"

namespace korvel {
namespace {

TEST(Wire, FramesAreTakenWholeAndInOrder) {
  SharedMemory memory;
  wire::Shared* shared = memory.get();
  constexpr uint64_t kLast = 20'000;
  constexpr size_t kWords = 500;
  std::thread engine([shared] {
    wire::Writer writer;
    for (uint64_t sequence = 1; sequence <= kLast; ++sequence) {
      wire::Frame* frame = writer.Begin(shared);
      frame->sequence = sequence;
      auto* words = reinterpret_cast<uint64_t*>(frame + 1);
      for (size_t i = 0; i < kWords; ++i) words[i] = sequence;
      writer.Publish(shared);
    }
  });
  wire::Reader reader;
  uint64_t before = 0;
  uint64_t torn = 0;
  while (before < kLast) {
    if (!reader.Take(shared)) {
      std::this_thread::yield();
      continue;
    }
    const wire::Frame* frame = reader.frame(shared);
    const auto* words = reinterpret_cast<const uint64_t*>(frame + 1);
    for (size_t i = 0; i < kWords; ++i) torn += words[i] != frame->sequence;
    EXPECT_GT(frame->sequence, before);
    before = frame->sequence;
  }
  engine.join();
  EXPECT_EQ(torn, 0u);
  EXPECT_FALSE(reader.Take(shared)) << "nothing newer";
}

TEST(Wire, EventsArriveInOrderAndDoNotOverflow) {
  SharedMemory memory;
  wire::Event event{};
  EXPECT_FALSE(wire::TakeEvent(memory.get(), &event));
  int put = 0;
  while (wire::PutEvent(memory.get(), {0, put, 0, 0})) ++put;
  EXPECT_EQ(put, static_cast<int>(wire::kEvents));
  for (int round = 0; round < 3000; ++round) {
    ASSERT_TRUE(wire::TakeEvent(memory.get(), &event));
    EXPECT_EQ(event.code, round);
    EXPECT_TRUE(wire::PutEvent(memory.get(), {0, put++, 0, 0}));
  }
}

TEST(Wire, PixelsStayAsTheyAreWhileAFrameMayShowThem) {
  SharedMemory memory;
  Arena arena;
  ASSERT_TRUE(arena.Reset());
  PixelStore store(arena, memory.get());
  uint8_t pixels[64 * 64 * 3] = {};
  Bitmap bitmap{};
  bitmap.number = 1;
  bitmap.width = bitmap.height = 64;
  bitmap.pixels = pixels;
  const auto first_byte = [&memory](const wire::Pixels& placed) {
    return reinterpret_cast<const uint8_t*>(memory.get())[placed.offset];
  };
  const wire::Pixels held = store.Place(bitmap, 1);
  memory.get()->held = 1;
  wire::Pixels last{};
  for (uint64_t frame = 2; frame < 40; ++frame) {
    pixels[0] = static_cast<uint8_t>(frame);
    ++bitmap.version;
    last = store.Place(bitmap, frame);
    EXPECT_EQ(store.Place(bitmap, frame).offset, last.offset) << "twice in one frame";
    store.Sweep(frame);
  }
  EXPECT_EQ(first_byte(held), 0) << "the window still draws frame 1";
  EXPECT_EQ(first_byte(last), 39);
  // A window that follows lets a picture that changes all the time use a few copies only.
  uint64_t used = 0;
  for (uint64_t frame = 40; frame < 5000; ++frame) {
    ++bitmap.version;
    store.Place(bitmap, frame);
    memory.get()->held = frame - 1;
    store.Sweep(frame);
    if (frame == 100) used = store.used();
  }
  EXPECT_EQ(store.used(), used);
}

TEST(Wire, ABrokenFrameIsNotFollowedOutOfItsMemory) {
  SharedMemory memory;
  wire::Frame* frame = wire::FrameAt(memory.get(), 0);
  frame->width = -5;
  frame->height = 100'000;
  frame->bytes = UINT32_MAX;
  auto* items = reinterpret_cast<uint32_t*>(frame + 1);
  window::Painter painter;
  const uint32_t last = wire::kFrameBytes / 4 - static_cast<uint32_t>(sizeof(wire::Frame)) / 4;
  for (const uint32_t bytes : {0u, 4u, 8u, 16u, 24u, wire::kFrameBytes, UINT32_MAX}) {
    for (uint32_t kind = 0; kind < 16; ++kind) {
      for (uint32_t at = 0; at < last; ++at) items[at] = at % 2 == 0 ? kind : bytes;
      frame->height = 3;
      painter.Paint(*frame, memory.get());
    }
  }
  for (uint32_t at = 0; at < last; ++at) items[at] = 0xffffffff;
  items[0] = static_cast<uint32_t>(wire::Kind::kText);
  items[1] = 200;
  items[100] = static_cast<uint32_t>(wire::Kind::kPicture);
  painter.Paint(*frame, memory.get());
}

}  // namespace
}  // namespace korvel
