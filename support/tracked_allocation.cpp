#include "support/tracked_allocation.h"

#include <assert.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "support/assertion.h"
#include "support/errors.h"
#include "support/huge_pages.h"

namespace fld {

struct AllocationNode {
  void* block;
  int tag;
  AllocationNode* next;      // older block of the same list
  AllocationNode* previous;  // newer block of the same list
  AllocationNode* chain;     // next node of the same bucket of the index
};

AllocationNode* memory = nullptr;

namespace {

// Hash table from block to node. It has no constructor or destructor, because the reader's globals free
// blocks while the library is being unloaded. The table is freed with the last block.
struct BlockIndex {
  AllocationNode** buckets;
  size_t bucket_count;  // a power of two, or 0
  size_t size;
};
BlockIndex block_index = {nullptr, 0, 0};

AllocationNode*& bucket_of(const void* block) {
  const uint64_t key = reinterpret_cast<uintptr_t>(block) >> 4;  // malloc aligns to 16 bytes
  return block_index.buckets[(key * 0x9E3779B97F4A7C15U >> 20) & (block_index.bucket_count - 1)];
}

// Makes room for one more block. If a larger table cannot be allocated, the chains get longer instead; only
// the first allocation must succeed.
[[nodiscard]] bool reserve_index() {
  if (block_index.size < block_index.bucket_count) return true;
  const size_t count = block_index.bucket_count == 0 ? 64 : block_index.bucket_count * 2;
  auto** buckets = static_cast<AllocationNode**>(calloc(count, sizeof(void*)));
  if (buckets == nullptr) return block_index.bucket_count != 0;
  const BlockIndex old = block_index;
  block_index.buckets = buckets;
  block_index.bucket_count = count;
  for (size_t i = 0; i < old.bucket_count; ++i) {
    for (AllocationNode* node = old.buckets[i]; node != nullptr;) {
      AllocationNode* following = node->chain;
      AllocationNode*& head = bucket_of(node->block);
      node->chain = head;
      head = node;
      node = following;
    }
  }
  free(old.buckets);
  return true;
}

void add_to_index(AllocationNode* node) {
  AllocationNode*& head = bucket_of(node->block);
  node->chain = head;
  head = node;
  ++block_index.size;
}

AllocationNode* find_in_index(const void* block) {
  if (block_index.size == 0) return nullptr;
  AllocationNode* node = bucket_of(block);
  while (node != nullptr && node->block != block) node = node->chain;
  return node;
}

void remove_from_index(AllocationNode* node) {
  AllocationNode** link = &bucket_of(node->block);
  while (*link != node) link = &(*link)->chain;
  *link = node->chain;
  --block_index.size;
}

// Frees an unlinked node and its block, and the index along with the last block.
void release(AllocationNode* node) {
  if (node->block != nullptr) {
    remove_from_index(node);
    free(node->block);
  }
  free(node);
  if (block_index.size > 0) return;
  free(block_index.buckets);
  block_index = {nullptr, 0, 0};
}

void unlink_from_list(AllocationNode* node) {
  if (node->previous != nullptr) node->previous->next = node->next;
  if (node->next != nullptr) node->next->previous = node->previous;
  if (memory == node) memory = node->next;
}

// Allocates a block and puts it at the head of the list. Throws if either fails.
template <class Allocate>
void* allocate_listed(int tag, Allocate allocate) {
  auto* node = static_cast<AllocationNode*>(malloc(sizeof(AllocationNode)));
  void* block = node != nullptr ? allocate() : nullptr;
  if (block == nullptr || !reserve_index()) {
    free(block);
    free(node);
    throw MemoryAllocException("NOT ENOUGH MEMORY");
  }
  *node = {block, tag, memory, nullptr, nullptr};
  if (memory != nullptr) memory->previous = node;
  memory = node;
  add_to_index(node);
  return block;
}

}  // namespace

void set_memory() {
  memory = nullptr;
}

void free_memory() {
  while (memory != nullptr) {
    AllocationNode* node = memory;
    unlink_from_list(node);
    if (node->block != nullptr) fprintf(stderr, "MEMORY LEAK DETECTED %d\n", node->tag);
    release(node);
  }
}

void* cv_maloc(size_t size, int tag) {
  if (size == 0) return nullptr;
  void* block = allocate_listed(tag, [size] { return malloc(size); });
  take_huge_pages(block, size);
  return block;
}

void* cv_caloc(size_t count, size_t size, int tag) {
  void* block = cv_reserve(count, size, tag);
  take_huge_pages(block, count * size);
  return block;
}

void* cv_reserve(size_t count, size_t size, int tag) {
  if (count == 0 || size == 0) return nullptr;
  return allocate_listed(tag, [count, size] { return calloc(count, size); });
}

void* cv_realoc(void* block, size_t size) {
  if (block == nullptr) return nullptr;
  AllocationNode* node = find_in_index(block);
  if (node == nullptr) throw MemoryAllocException("ATTEMPT TO REALLOC UNKNOWN POINTER");
  remove_from_index(node);
  void* resized = realloc(block, size);
  node->block = resized;
  if (resized != nullptr) add_to_index(node);
  return resized;
}

void cv_mfree(void* block) {
  if (block == nullptr) return;
  AllocationNode* node = find_in_index(block);
  // The line number is part of the documented report.
  if (node == nullptr) fail_assertion("0", "Convert_common", 107, "void cv_mfree(void *)");
  unlink_from_list(node);
  release(node);
}

}  // namespace fld
