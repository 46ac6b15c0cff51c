# SPDX-License-Identifier: MIT
# Moves a page that shows pictures beside it, INDEX, to GUIDE, from where the way to the pictures is PICTURES.
file(READ "${INDEX}" text)
string(REPLACE "](" "](${PICTURES}" text "${text}")
file(WRITE "${GUIDE}" "${text}")
file(REMOVE "${INDEX}")
