/*
 * The intrusive doubly linked list of the receiver's base library.
 *
 * A record is linked through a list_head that stands at its very start, so the record's address is its node's
 * address. An empty head, like an unlinked node, points to itself in both words.
 */
#ifndef BASE_LIST_H
#define BASE_LIST_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct list_head {
  struct list_head *next;
  struct list_head *prev;
} list_head;

/** Makes @p head an empty list, or a node that is in no list. Must not be null. */
static inline void list_init(list_head *head) {
  head->next = head;
  head->prev = head;
}

/** Appends @p node, which must be in no list, behind the last node of the list @p head. Neither may be null. */
static inline void list_add_tail(list_head *node, list_head *head) {
  node->next = head;
  node->prev = head->prev;
  head->prev->next = node;
  head->prev = node;
}

/** Takes @p node out of its list and makes it point to itself. Must be linked or point to itself. */
static inline void list_del_init(list_head *node) {
  node->prev->next = node->next;
  node->next->prev = node->prev;
  list_init(node);
}

#ifdef __cplusplus
}
#endif

#endif
