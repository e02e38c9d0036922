# Defined by the other package already; a product's own would define its target here.
