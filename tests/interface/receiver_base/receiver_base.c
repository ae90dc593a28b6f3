/* A receiver's own base library: its functions are no inline ones, and its names are all that the interface asks for.
 */
#include <base/list.h>
#include <base/verbosity.h>

int verbosity_map[107];

void list_add_tail(list_head *node, list_head *head) {
  list_head *last = head->prev;
  *node = (list_head){head, last};
  last->next = node;
  head->prev = node;
}

void list_del_init(list_head *node) {
  node->prev->next = node->next;
  node->next->prev = node->prev;
  *node = (list_head){node, node};
}
