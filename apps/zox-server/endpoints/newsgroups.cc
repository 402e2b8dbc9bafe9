/* SPDX-License-Identifier: LGPL-2.1-or-later */
#include "zox-server/endpoints/endpoints.h"

namespace velkor::server::endpoints {

Reply newsgroups(Service &service, const Request &, const Account &) {
  XmlWriter xml("Groups");
  for (const Group &group : service.groups.later_than(0)) {
    xml.open("Group");
    xml.attribute("ID", group.id);
    xml.element("Name", group.name);
    xml.close();
  }
  return xml_reply(xml.finish());
}

}  // namespace velkor::server::endpoints
