int zt_placeholder = 0;
