// Only here to be compiled with the common headers, which the rooms then share.
